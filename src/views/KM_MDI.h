#pragma once
// KM_MDI, the main window: menus, the status bar with one panel per furnace,
// the area of the child forms, and the two timers that drive the station.

#include "core/screen.h"
#include "views/KM_Alarme.h"
#include "views/KM_Kurve.h"
#include "views/KM_Liste.h"
#include "views/KM_Logdaten.h"
#include "views/KM_Menue.h"
#include "views/KM_ProgView.h"
#include "views/KM_ProgWahl.h"
#include "views/KM_Schritte.h"
#include "views/KM_Parameter.h"
#include "views/KM_RegPar.h"
#include "views/KM_SNTStrom.h"
#include "views/KM_System.h"
#include "views/KM_TempDatei.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <vector>

class QAction;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;

namespace kal {

class QtDialogs;


/// The main window is also the screen of the station's logic (core/screen.h):
/// status panels, menu switches and the refreshes of its forms.
class KM_MDI : public QMainWindow, public Screen {
    Q_OBJECT
public:
    explicit KM_MDI(QWidget *parent = nullptr);
    ~KM_MDI() override;

    /// The load handler: start-up in its fixed order, then the timers run.
    void load();

    /// Re-captions every menu entry and the open forms in the current language.
    void captionMenus();

    /// Text of status-bar panel 1..8.
    QString panelText(int panel) const;

    KM_Menue *menuePage() const { return m_menue; }
    /// Opens the message form (configuration mode when `konfig`); while it is
    /// shown its menu entries are disabled.
    void showAlarms(bool konfig);
    KM_Alarme *alarme() const { return m_alarme; }
    /// Opens the controller parameter form (made on first use, kept to the end).
    void showControllerParameters();
    KM_RegPar *regPar() const { return m_regPar; }
    /// Opens the settings dialog with a fresh working copy.
    void showSettings();
    KM_Parameter *parameter() const { return m_parameter; }
    /// Opens the system dialog on the furnace selected on the live page.
    void showSystem();
    KM_System *system() const { return m_system; }
    /// The curve window with the batch file `datei` (loaded anew), brought up.
    void showCurve(const QString &datei);
    /// A second start on the same data folder asked for this window: it comes
    /// to the front, with the batch `datei` in the curve window unless empty.
    void bringToFront(const QString &datei);
    /// The batch browser, brought up (made on first use, hidden on OK/Cancel).
    void showBatchBrowser();
    /// The log data page of furnace number 1..8.
    void showLogBook(int ofenNr);
    KM_Kurve *kurve() const { return m_kurve; }
    KM_TempDatei *tempDatei() const { return m_tempDatei; }
    KM_Logdaten *logdaten() const { return m_logdaten; }
    QMdiArea *mdiArea() const { return m_mdi; }

    /// The program forms, each made on first use and kept to the end.
    void showProgramChoice();
    void showSteps(int ofenNr, int p);
    void showProgramView();
    KM_ProgWahl *progWahl() const { return m_progWahl; }
    KM_Schritte *schritte() const { return m_schritte; }
    KM_ProgView *progView() const { return m_progView; }
    QAction *mnuProgView() const { return m_mnuProgView; }

    /// `mnuform` entries 0..7 (the child forms); `mnuRegler`.
    QAction *mnuform(int i) const { return m_mnuform.value(i); }
    QAction *mnuRegler() const { return m_mnuRegler; }

    // Screen
    void Status_Panel(int panel, const QString &text) override;
    void mnuRegler(bool on) override;
    void mnuform(int i, bool on) override;
    void showMenu() override;
    void languageChanged() override;
    void showLogLine(const QString &line) override;
    void drawMessages(bool liste) override;
    void showElements() override;

    /// The import menu entry: while it is on, the live page lists the sources
    /// of the USB folder beside the import's switch.
    QAction *mnuImport() const { return m_mnuImport; }
    void curveChanged() override;

    // ---- batch documents ---------------------------------------------------
    void Kurve_Online() override;
    /// The value list of the batch on view (made on first use, kept).
    void showValueList();
    /// The 16-channel view of the curve window's page, modal above it.
    void showView16();
    /// The element current view of furnace number 1..8 (made on first use, kept).
    void showElementView(int ofenNr);
    KM_Liste *liste() const { return m_liste; }
    KM_SNTStrom *elementView() const { return m_sntStrom; }
    /// The window `Aktive_Seite` names; nullptr none.
    QWidget *druckFenster() const;
    /// `mnuPrintForm`: the page in front on the printer, or with `pdf` into a
    /// PDF file that is asked for ("Export PDF…").
    void mnuPrintForm(bool pdf);

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void buildMenus();
    QAction *menuEntry(QMenu *menu, int textId, std::function<void()> handler);
    void mnuSchliessen_Click();
    /// In the viewer, the entries that would reach a PLC or write the
    /// station's files are off.
    void viewerMenus();
    /// Window menu: the child forms one below the other (Qt::Vertical) or side
    /// by side (Qt::Horizontal), filling the area.
    void arrangeWindows(Qt::Orientation richtung);
    void languagePicked(int sprache);
    /// Shows a kept form in its own child window (made the first time).
    QMdiSubWindow *showChild(QWidget *form, QPointer<QMdiSubWindow> &fenster);

    QMdiArea *m_mdi = nullptr;
    QtDialogs *m_dialogs = nullptr;
    QPointer<KM_Menue> m_menue;
    QPointer<QMdiSubWindow> m_menueFenster;
    QPointer<KM_Alarme> m_alarme;
    QPointer<KM_ProgWahl> m_progWahl;
    QPointer<KM_Schritte> m_schritte;
    QPointer<KM_ProgView> m_progView;
    QPointer<QMdiSubWindow> m_progWahlFenster, m_schritteFenster, m_progViewFenster;
    QAction *m_mnuProgView = nullptr;
    QPointer<KM_RegPar> m_regPar;
    QPointer<QMdiSubWindow> m_regParFenster;
    QPointer<KM_Parameter> m_parameter;
    QPointer<QMdiSubWindow> m_parameterFenster;
    QPointer<KM_System> m_system;
    QPointer<QMdiSubWindow> m_systemFenster;
    QPointer<KM_Kurve> m_kurve;
    QPointer<QMdiSubWindow> m_kurveFenster;
    QPointer<KM_TempDatei> m_tempDatei;
    QPointer<QMdiSubWindow> m_tempFenster;
    QPointer<KM_Logdaten> m_logdaten;
    QPointer<KM_Liste> m_liste;
    QPointer<QMdiSubWindow> m_listeFenster;
    QPointer<KM_SNTStrom> m_sntStrom;
    QPointer<QMdiSubWindow> m_sntFenster;
    QPointer<QWidget> m_view16;
    QList<QAction *> m_mnuform;
    QAction *m_mnuRegler = nullptr;
    QAction *m_mnuBeenden = nullptr;
    QAction *m_mnuSchliessen = nullptr;
    QAction *m_mnuPrintForm = nullptr;
    QAction *m_mnuMeldConfig = nullptr;
    QAction *m_mnuImport = nullptr;
    QList<QMenu *> m_menus;
    struct MenuCaption {
        QObject *ziel;      ///< QAction or QMenu
        int textId;         ///< Sprachtext id
        QString vorsatz;    ///< fixed text before the caption
        int nachsatzId = -1; ///< Sprachtext id of a second word after a blank, -1 none
    };
    std::vector<MenuCaption> m_beschriftungen;
    QLabel *m_panels[8] = {};
    QTimer m_timer1;
    QTimer m_timer2;
};

/// The main window of the process (set while it exists).
KM_MDI *mainWindow();

} // namespace kal
