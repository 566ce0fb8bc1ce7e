#pragma once
// KM_System, the system dialog: the make-up of one furnace (type text, serial
// number, limits), the text lists of the panels with their files, and the copy
// of the memory card onto a card drive. It edits the working copy of
// config/system_dialog.h; `OKButton` takes it over.

#include <QTimer>
#include <QWidget>
#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace kal {

class KM_System : public QWidget {
    Q_OBJECT
public:
    explicit KM_System(QWidget *parent = nullptr);

    /// Opens on furnace number `ofenNr` with a fresh working copy.
    void onOpen(int ofenNr);
    void setCaptions();

    QLineEdit *Text1(int i) const { return m_text1[size_t(i)]; }
    QListWidget *List_MLDTXT() const { return m_mldtxt; }
    QPushButton *OKButton() const { return m_ok; }
    QPushButton *copyButton() const { return m_kopieren; }

Q_SIGNALS:
    void completed();

private:
    void showValues();
    void showList();
    void showTexts();
    void showDrives();
    void laden(const QString &name);

    QComboBox *m_ofen = nullptr;
    std::array<QLineEdit *, 6> m_text1{};
    std::array<QLabel *, 6> m_text1Label{};
    QComboBox *m_art = nullptr;
    QListWidget *m_liste = nullptr;
    QComboBox *m_mNr = nullptr;
    QListWidget *m_mldtxt = nullptr;
    QLineEdit *m_mtxt = nullptr;
    QLineEdit *m_dir = nullptr;
    QLabel *m_meldung = nullptr;
    std::array<QPushButton *, 4> m_dateiButton{};
    QComboBox *m_drive = nullptr;
    QCheckBox *m_check1 = nullptr;
    QPushButton *m_kopieren = nullptr;
    QPushButton *m_ok = nullptr;
    QPushButton *m_abbruch = nullptr;
    QLabel *m_ofenTitel = nullptr;
    QLabel *m_texteTitel = nullptr;
    QLabel *m_karteTitel = nullptr;
    QLabel *m_dateiTitel = nullptr;
    QTimer m_timer;
};

} // namespace kal
