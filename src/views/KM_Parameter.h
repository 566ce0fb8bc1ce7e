#pragma once
// KM_Parameter, the settings dialog: the tab strip `TabStrip1` with the
// general tab, one tab per furnace and "PLC-Info", over one set of controls
// that `Wert_akt` fills for the tab chosen. The dialog edits the working copy
// of config/settings_dialog.h; only OK takes it over.

#include <QTimer>
#include <QWidget>
#include <array>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QTabBar;
class QToolButton;

namespace kal {

class KM_Parameter : public QWidget {
    Q_OBJECT
public:
    explicit KM_Parameter(QWidget *parent = nullptr);

    /// The dialog opens: a fresh working copy, the general tab.
    void onOpen();
    /// Writes the working copy of the tab chosen into the controls.
    void Wert_akt();
    /// Captions in the current language.
    void setCaptions();

    QTabBar *TabStrip1() const { return m_tabs; }
    QLineEdit *Text1(int i) const;
    QLineEdit *Text2(int i) const { return m_text2[size_t(i)]; }
    QPushButton *Command1(int i) const { return m_command1[size_t(i)]; }
    QRadioButton *Option1(int i) const { return m_option1[size_t(i)]; }
    QLabel *Status() const { return m_status; }
    QPushButton *usbPathButton() const { return m_usbButton; }

Q_SIGNALS:
    /// The dialog is done (OK taken, or cancelled).
    void completed();

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    QWidget *buildGeneralTab();
    QWidget *buildFurnaceTab();
    QWidget *buildInfoTab();
    void tabChosen(int index);
    void showColours();
    void showStatus();
    void showUsbFolder();
    void text1Left(int i);

    QTabBar *m_tabs = nullptr;
    QStackedWidget *m_seiten = nullptr;
    // general tab
    QComboBox *m_sprache = nullptr;
    QLabel *m_spracheLabel = nullptr;
    std::array<QLineEdit *, 3> m_text2{};
    std::array<QLabel *, 3> m_text2Label{};
    QLineEdit *m_disk = nullptr;
    QLabel *m_diskLabel = nullptr;
    std::array<QLabel *, 4> m_ordnerLabel{};
    std::array<QLineEdit *, 4> m_ordner{};
    std::array<QToolButton *, 4> m_suchButton{};
    QCheckBox *m_backup = nullptr;
    QCheckBox *m_kurveOption = nullptr;
    QPushButton *m_command3 = nullptr;
    QPushButton *m_usbButton = nullptr; ///< `USB_Button`, the switch of the USB import
    QLabel *m_usbAct = nullptr;         ///< `USB_ACT`, its progress
    QLabel *m_druckTitel = nullptr;
    QLabel *m_ordnerTitel = nullptr;
    // furnace tab
    QLabel *m_adressTitel = nullptr;
    std::array<QLineEdit *, 4> m_ip{};
    std::array<QRadioButton *, 3> m_option1{};
    QButtonGroup *m_optionGruppe = nullptr;
    QCheckBox *m_aktiv = nullptr;
    QCheckBox *m_charge = nullptr;
    QCheckBox *m_tempLog = nullptr;
    QLineEdit *m_takt = nullptr;
    QLineEdit *m_schwelle = nullptr;
    QLineEdit *m_nrProg = nullptr;
    QLineEdit *m_bezeichnung = nullptr;
    QLabel *m_taktLabel = nullptr;
    QLabel *m_schwelleLabel = nullptr;
    QLabel *m_nrProgLabel = nullptr;
    QLabel *m_bezeichnungLabel = nullptr;
    QLabel *m_kennung = nullptr;
    QListWidget *m_kanaele = nullptr;
    std::array<QToolButton *, 24> m_farbSift{};
    QPushButton *m_farbTopf = nullptr;
    QLabel *m_farbText = nullptr;
    QPlainTextEdit *m_mtxt = nullptr;
    QPushButton *m_mtxtButton = nullptr;
    // PLC-Info tab
    QPlainTextEdit *m_info = nullptr;
    // always
    QLabel *m_status = nullptr;
    std::array<QPushButton *, 3> m_command1{};
    QTimer m_timer;
    bool m_fuellen = false; ///< Wert_akt runs: control events take nothing back
};

} // namespace kal
