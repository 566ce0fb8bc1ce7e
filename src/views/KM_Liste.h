#pragma once
// KM_Liste, the value list of the batch on view: the choice of columns (Soll,
// Ist, Out per channel, and the rows of segments and messages), the two head
// lines and the rows in fixed cells, printing and PDF. A click on a check
// rebuilds the list once after a short pause, not on every click. While the
// window is open, moving the mouse over the curve reads nothing.

#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <array>

class QCheckBox;
class QGridLayout;
class QLabel;
class QListWidget;
class QPushButton;

namespace kal {

class KM_Liste : public QWidget {
    Q_OBJECT
public:
    explicit KM_Liste(QWidget *parent = nullptr);
    ~KM_Liste() override;

    /// Opening: the checks from the column choice, the list of the batch.
    void onOpen();
    void setCaptions();

    QListWidget *CSV_LIST() const { return m_liste; }
    QCheckBox *CB_Soll(int i) const { return m_soll[size_t(i)]; }
    QCheckBox *CB_Ist(int i) const { return m_ist[size_t(i)]; }
    QCheckBox *CB_Out(int i) const { return m_out[size_t(i)]; }
    QPushButton *Print_Button() const { return m_drucken; }
    QSize sizeHint() const override { return {1100, 620}; }

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void showBatch();
    void haekchen();
    void drucken(bool pdf);

    static constexpr int CHECKS = 12; ///< channels 0..10 and the row switches
    std::array<QLabel *, CHECKS> m_txt{};
    std::array<QLabel *, 3> m_zeile{};
    std::array<QCheckBox *, CHECKS> m_soll{}, m_ist{}, m_out{};
    QListWidget *m_kopf = nullptr; // CSV_Text
    QListWidget *m_liste = nullptr;
    QPushButton *m_drucken = nullptr, *m_pdf = nullptr, *m_ok = nullptr;
    QTimer m_timer;
};

} // namespace kal
