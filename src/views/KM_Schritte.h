#pragma once
// KM_Schritte, the step editor: the working copy of a program as eight rows
// of segments over the scroll bar HScroll1, the name Text1 and the date
// Label1, the buttons Taste(0..7) (send to a memory place, load into the
// furnace or save, end), copy and paste, and the total time at the foot.
// Every rule lives in src/programs (program_editor.h); the form only shows.

#include "programs/program_file.h"

#include <QTimer>
#include <QWidget>
#include <array>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

namespace kal {

class KM_Schritte : public QWidget {
    Q_OBJECT
public:
    explicit KM_Schritte(QWidget *parent = nullptr);

    /// Opens program p of furnace number `ofenNr` (after the selection set
    /// `Prog_Aus_Puffer`); false with no furnace.
    bool onOpen(int ofenNr, int p);
    /// Captions in the current language; redraws.
    void setCaptions();
    /// `Ausgabe_AKT`: every row from the working copy.
    void Ausgabe_AKT();

    QPushButton *Taste(int i) const { return m_taste[size_t(i)]; }
    QLineEdit *Text1() const { return m_text1; }
    QLabel *footer() const { return m_fuss; }
    QScrollBar *HScroll1() const { return m_scroll; }
    QComboBox *Combo2(int row) const { return m_reihe[size_t(row)].Combo2; }
    QLineEdit *Sollwert(int row) const { return m_reihe[size_t(row)].Sollwert; }
    QLineEdit *Gradient(int row) const { return m_reihe[size_t(row)].Gradient; }
    QLineEdit *MaxOUT(int row) const { return m_reihe[size_t(row)].MaxOUT; }
    QLineEdit *Zuluft(int row) const { return m_reihe[size_t(row)].Zuluft; }
    QPushButton *OUTPUT(int row, int bit) const { return m_reihe[size_t(row)].OUTPUT[size_t(bit)]; }
    QPushButton *copyButton() const { return m_kopieren; }
    QPushButton *insertButton() const { return m_einfuegen; }

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;

private:
    struct SegmentRow {
        QLabel *Label3 = nullptr;        ///< segment number
        QComboBox *Combo2 = nullptr;
        QLineEdit *Sollwert = nullptr;
        QLabel *Soll_Einh = nullptr;
        QLineEdit *Gradient = nullptr;
        QLabel *Grad_Einheit = nullptr;
        QLineEdit *MaxOUT = nullptr;
        QLabel *MaxEinheit = nullptr;
        std::array<QPushButton *, 4> OUTPUT{};
        QLineEdit *Zuluft = nullptr;
        QLineEdit *Analog2 = nullptr;
    };

    void Segment(int row);
    void Loadtaste();
    void showColumns();
    void fieldLeft(int row, void (*format)(int, const QString &), QLineEdit *feld);
    void keyPressed(int i);
    void takeOpenField();
    void showDate();

    std::array<SegmentRow, 8> m_reihe;
    std::array<QLabel *, 9> m_kopf{};
    std::array<QLabel *, 4> m_ausgangKopf{};
    QLabel *m_zuluftKopf = nullptr;
    QLabel *m_analogKopf = nullptr;
    QLineEdit *m_text1 = nullptr;
    QLabel *m_label1 = nullptr;
    QLabel *m_fuss = nullptr;
    QScrollBar *m_scroll = nullptr;
    std::array<QPushButton *, 8> m_taste{};
    QPushButton *m_kopieren = nullptr;
    QPushButton *m_einfuegen = nullptr;
    OutputLabels m_label;
    QTimer m_timer1;
    bool m_zeichnet = false;
};

} // namespace kal
