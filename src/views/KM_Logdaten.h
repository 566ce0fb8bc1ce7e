#pragma once
// KM_Logdaten, the log data page: a batch file record by record (`LogList`),
// numbers as stored. While it is open its menu entry is off.

#include <QWidget>

class QListWidget;

namespace kal {

class KM_Logdaten : public QWidget {
    Q_OBJECT
public:
    explicit KM_Logdaten(QWidget *parent = nullptr);
    ~KM_Logdaten() override;

    /// Shows the batch file of furnace number 1..8 (`Charge_Datei`); 0 none.
    void load(int ofenNr);
    QListWidget *LogList() const { return m_list; }

private:
    QListWidget *m_list = nullptr;
};

} // namespace kal
