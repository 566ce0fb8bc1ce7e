#pragma once
// KM_ProgView, the program view: the program the selected furnace of the live
// page runs, or one of its six memory places, read-only from the word image
// and refreshed by its own timer. Taste(0..5) fetch a memory place, Taste(6)
// copies the program shown into the copy buffer, Taste(7) closes; F1..F8.

#include "programs/program_file.h"

#include <QTimer>
#include <QWidget>
#include <array>

class QLabel;
class QPushButton;
class QTableWidget;

namespace kal {

class KM_ProgView : public QWidget {
    Q_OBJECT
public:
    explicit KM_ProgView(QWidget *parent = nullptr);

    /// Shows the active program of the selected furnace and starts the timer.
    void onOpen();
    void setCaptions();
    /// `Seite_Act`: rebuilds the text from the image.
    void Seite_Act();

    QPushButton *Taste(int i) const { return m_taste[size_t(i)]; }
    QTableWidget *segmentTable() const { return m_tabelle; }
    QLabel *titleLabel() const { return m_titel; }
    QLabel *lengthLabel() const { return m_laenge; }

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;

private:
    void keyPressed(int i);

    QLabel *m_titel = nullptr;
    QLabel *m_name = nullptr;
    QTableWidget *m_tabelle = nullptr;
    QLabel *m_laenge = nullptr;
    QLabel *m_status = nullptr;
    std::array<QPushButton *, 8> m_taste{};
    OutputLabels m_label;
    int m_ofenNr = -1;     ///< furnace whose label file is read
    int m_offset = 0;      ///< offset of the words shown
    QTimer m_timer1;
};

} // namespace kal
