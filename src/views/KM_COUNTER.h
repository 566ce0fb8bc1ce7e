#pragma once
// KM_COUNTER, the progress form of a program transfer: shown modally while
// the program block waits in the furnace's write queue and goes out at the
// furnace's next turn of the main cycle. It closes by itself once the block
// has gone; "Abbruch" drops the queued block (the PLC keeps what it had).

#include <QDialog>
#include <QTimer>

class QLabel;
class QProgressBar;
class QPushButton;

namespace kal {

class KM_COUNTER : public QDialog {
    Q_OBJECT
public:
    /// For furnace index `ofen`, `anzahl` words, the program `name`.
    KM_COUNTER(int ofen, int anzahl, const QString &name, QWidget *parent = nullptr);

    /// Opens the form modally and returns when the block has gone (true) or
    /// the transfer was cancelled (false).
    static bool showModal(int ofen, int anzahl, const QString &name, QWidget *parent);

    QProgressBar *progressBar() const { return m_balken; }

private:
    void tick();

    int m_ofen;
    int m_start;          ///< turns to go when the form opened
    QLabel *m_text = nullptr;
    QProgressBar *m_balken = nullptr;
    QPushButton *m_abbruch = nullptr;
    QTimer m_timer;
    bool m_fertig = false;
};

} // namespace kal
