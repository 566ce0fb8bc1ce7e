#include "views/KM_MDI.h"

#include "config/languages.h"
#include "config/text_ids.h"
#include "core/plant_state.h"
#include "curves/csv_export.h"
#include "recording/usb_import.h"
#include "station/main_cycle.h"
#include "station/shutdown.h"
#include "station/station_start.h"
#include "views/KM_Alarme.h"
#include "views/KM_Menue.h"
#include "views/KM_View16.h"
#include "views/printing.h"
#include "views/qt_dialogs.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <algorithm>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStatusBar>

namespace kal {

namespace {
KM_MDI *g_main = nullptr;
} // namespace

KM_MDI *mainWindow()
{
    return g_main;
}

KM_MDI::KM_MDI(QWidget *parent) : QMainWindow(parent)
{
    g_main = this;
    setWindowTitle(plant.viewer ? QStringLiteral("Kalmeron Viewer") : QStringLiteral("Kalmeron"));
    m_mdi = new QMdiArea(this);
    m_mdi->setBackground(palette().window());
    setCentralWidget(m_mdi);

    m_dialogs = new QtDialogs(this);
    setDialogs(m_dialogs);

    for (int i = 0; i < 8; ++i) {
        m_panels[i] = new QLabel(this);
        m_panels[i]->setFrameShape(QFrame::Panel);
        m_panels[i]->setFrameShadow(QFrame::Sunken);
        m_panels[i]->setMinimumWidth(60);
        m_panels[i]->setTextFormat(Qt::PlainText);
        statusBar()->addWidget(m_panels[i], 1);
    }

    kal::setScreen(this);
    buildMenus();

    m_timer1.setInterval(100);
    connect(&m_timer1, &QTimer::timeout, this, [] { Timer1_Tick(); });
    m_timer2.setInterval(1000);
    connect(&m_timer2, &QTimer::timeout, this, [] { Timer2_Tick(); });
}

KM_MDI::~KM_MDI()
{
    kal::setScreen(nullptr);
    setDialogs(nullptr);
    delete m_dialogs;
    if (g_main == this)
        g_main = nullptr;
}

void KM_MDI::load()
{
    Station_Start();
    // The settings and the system dialog are off while the station starts
    // and open to the people who run it once it is up.
    mnuform(6, true);
    mnuform(7, true);
    if (plant.viewer)
        viewerMenus();
    captionMenus();
    m_timer1.start();
    m_timer2.start();
}

QAction *KM_MDI::menuEntry(QMenu *menu, int textId, std::function<void()> handler)
{
    QAction *a = menu->addAction(QString());
    m_beschriftungen.push_back({a, textId, QString()});
    if (handler)
        connect(a, &QAction::triggered, this, std::move(handler));
    else
        a->setEnabled(false); // an entry without a form of its own stays off
    return a;
}

void KM_MDI::buildMenus()
{
    QMenuBar *bar = menuBar();
    auto menu = [&](int textId) {
        QMenu *m = bar->addMenu(QString());
        m_beschriftungen.push_back({m, textId, QString()});
        m_menus.append(m);
        return m;
    };

    QMenu *datei = menu(text::FILE); // "Datei"
    m_mnuPrintForm = menuEntry(datei, text::PRINT_PAGE, [this] { mnuPrintForm(false); }); // "Seite Drucken"
    connect(datei->addAction(QStringLiteral("Export PDF…")), &QAction::triggered, this, [this] { mnuPrintForm(true); });
    m_mnuSchliessen = menuEntry(datei, text::CLOSE, [this] { mnuSchliessen_Click(); });
    datei->addSeparator();
    m_mnuBeenden = menuEntry(datei, text::QUIT, [] { Programm_Ende(); });

    // The form menu `mnuform`: 0 live page, 1 curve, 2 log data, 3 programs,
    // 4 batch data, 5 messages, 6 settings, 7 system.
    QMenu *formen = menu(text::MENU); // "Menü"
    m_mnuform.append(menuEntry(formen, text::MENU, [this] { showMenu(); }));
    m_mnuform.append(menuEntry(formen, text::TEMPERATURE_CURVE, [this] {
        // The curve window when a batch is on view, else the browser to choose one.
        if (m_kurve)
            m_mdi->setActiveSubWindow(m_kurveFenster);
        else
            showBatchBrowser();
    }));
    m_mnuform.append(menuEntry(formen, text::LOG_DATA, [this] { showLogBook(plant.Seite_Ofen); }));
    m_mnuform.append(menuEntry(formen, text::PROGRAMS, [this] { showProgramChoice(); }));
    m_mnuProgView = menuEntry(formen, text::PROGRAM, [this] { showProgramView(); });
    m_beschriftungen.back().nachsatzId = text::CURRENT; // "Programm aktuell"
    m_mnuform.append(menuEntry(formen, text::BATCH_DATA, nullptr));
    m_mnuform.append(menuEntry(formen, text::MESSAGES, [this] { showAlarms(false); }));
    m_mnuform.append(menuEntry(formen, text::SETTINGS, [this] { showSettings(); }));
    m_mnuform.append(menuEntry(formen, text::SYSTEM, [this] { showSystem(); }));

    QMenu *regler = menu(text::CONTROL_PARAMETERS); // "Regelparameter"
    m_mnuRegler = menuEntry(regler, text::CONTROL_PARAMETERS, [this] { showControllerParameters(); });

    QMenu *extras = menu(text::EXTRAS); // "Extras"
    m_mnuMeldConfig = menuEntry(extras, text::MESSAGES, [this] { showAlarms(true); });
    m_beschriftungen.back().vorsatz = QStringLiteral("Config ");
    m_mnuImport = extras->addAction(QStringLiteral("USB-Import"));
    m_mnuImport->setCheckable(true);
    connect(m_mnuImport, &QAction::toggled, this, [this](bool on) {
        plant.USB_Menue = flag(on);
        readSourceList();
        if (m_menue)
            m_menue->showUsb();
    });
    QMenu *sprache = extras->addMenu(QString());
    m_beschriftungen.push_back({sprache, text::LANGUAGE, QString()}); // "Sprache"
    for (int s = 0; s < 6; ++s)
        menuEntry(sprache, languageNameId(s), [this, s] { languagePicked(s); });

    QMenu *fenster = menu(text::WINDOW); // "Fenster"
    menuEntry(fenster, text::CASCADE, [this] { m_mdi->cascadeSubWindows(); });
    menuEntry(fenster, text::ONE_BELOW_ANOTHER, [this] { arrangeWindows(Qt::Vertical); });
    menuEntry(fenster, text::SIDE_BY_SIDE, [this] { arrangeWindows(Qt::Horizontal); });
}

void KM_MDI::captionMenus()
{
    for (const MenuCaption &b : m_beschriftungen) {
        QString t = b.vorsatz + Text_Id(b.textId).trimmed();
        if (b.nachsatzId >= 0)
            t += QLatin1Char(' ') + Text_Id(b.nachsatzId).trimmed();
        if (auto *a = qobject_cast<QAction *>(b.ziel))
            a->setText(t);
        else if (auto *m = qobject_cast<QMenu *>(b.ziel))
            m->setTitle(t);
    }
    if (m_menue)
        m_menue->setCaptions();
    if (m_alarme)
        m_alarme->setCaptions();
    if (m_progWahl)
        m_progWahl->setCaptions();
    if (m_schritte)
        m_schritte->setCaptions();
    if (m_progView)
        m_progView->setCaptions();
    if (m_regPar)
        m_regPar->setCaptions();
    if (m_parameter)
        m_parameter->setCaptions();
    if (m_system)
        m_system->setCaptions();
    if (m_kurve)
        m_kurve->setCaptions();
    if (m_tempDatei)
        m_tempDatei->setCaptions();
    if (m_liste)
        m_liste->setCaptions();
    if (m_sntStrom)
        m_sntStrom->setCaptions();
}

QString KM_MDI::panelText(int panel) const
{
    return (panel >= 1 && panel <= 8) ? m_panels[panel - 1]->text() : QString();
}

void KM_MDI::Status_Panel(int panel, const QString &text)
{
    if (panel < 1 || panel > 8)
        return;
    // The activity mark of the strip is character 127, which no Linux font
    // draws; the panel shows a block in its place.
    QString t = text;
    t.replace(QChar(127), QChar(0x25AE));
    m_panels[panel - 1]->setText(t);
}

void KM_MDI::mnuRegler(bool on)
{
    if (m_mnuRegler)
        m_mnuRegler->setEnabled(on);
}

void KM_MDI::mnuform(int i, bool on)
{
    if (QAction *a = m_mnuform.value(i))
        a->setEnabled(on);
}

void KM_MDI::languageChanged()
{
    captionMenus();
}

void KM_MDI::showLogLine(const QString &line)
{
    if (m_menue)
        m_menue->showLogLine(line);
}

void KM_MDI::drawMessages(bool liste)
{
    if (m_alarme)
        m_alarme->redraw(liste);
}

void KM_MDI::showElements()
{
    if (m_menue)
        m_menue->showElements();
}

void KM_MDI::showMenu()
{
    if (!m_menue) {
        m_menue = new KM_Menue;
        m_menueFenster = m_mdi->addSubWindow(m_menue);
        m_menueFenster->setWindowFlag(Qt::WindowCloseButtonHint, false);
        // Whatever ends the live page's maximised state (a form opened beside
        // it, another window maximised, the restore button) leaves the page on
        // the whole area, not on its first small size, where its rows would
        // lie on top of each other. Tiling and cascading place it afterwards.
        connect(m_menueFenster, &QMdiSubWindow::windowStateChanged, this,
                [this](Qt::WindowStates previous, Qt::WindowStates current) {
                    if ((previous & Qt::WindowMaximized) && !(current & (Qt::WindowMaximized | Qt::WindowMinimized)))
                        m_menueFenster->setGeometry(m_mdi->viewport()->rect());
                });
    }
    m_menueFenster->showMaximized();
    m_mdi->setActiveSubWindow(m_menueFenster);
}

void KM_MDI::showAlarms(bool konfig)
{
    if (m_alarme)
        return;
    m_alarme = new KM_Alarme(konfig);
    QMdiSubWindow *w = m_mdi->addSubWindow(m_alarme);
    m_mnuform[5]->setEnabled(false);
    m_mnuMeldConfig->setEnabled(false);
    connect(m_alarme, &KM_Alarme::closed, this, [this] {
        m_alarme = nullptr; // the form is deleted later; a new one may open at once
        m_mnuform[5]->setEnabled(true);
        m_mnuMeldConfig->setEnabled(true);
    });
    w->show();
    m_mdi->setActiveSubWindow(w);
}

QMdiSubWindow *KM_MDI::showChild(QWidget *form, QPointer<QMdiSubWindow> &fenster)
{
    if (!fenster) {
        fenster = m_mdi->addSubWindow(form);
        fenster->setAttribute(Qt::WA_DeleteOnClose, false); // closing hides; the form lives on
    }
    form->show();
    // A form of its own size beside the maximised live page, kept inside the
    // area so that none of it is cut off.
    fenster->showNormal();
    fenster->adjustSize();
    const QRect flaeche = m_mdi->viewport()->rect();
    QRect r = fenster->geometry();
    r.setSize(r.size().boundedTo(flaeche.size()));
    r.moveLeft(std::clamp(r.left(), 0, std::max(0, flaeche.width() - r.width())));
    r.moveTop(std::clamp(r.top(), 0, std::max(0, flaeche.height() - r.height())));
    fenster->setGeometry(r);
    m_mdi->setActiveSubWindow(fenster);
    return fenster;
}

void KM_MDI::showProgramChoice()
{
    if (!m_progWahl) {
        m_progWahl = new KM_ProgWahl;
        connect(m_progWahl, &KM_ProgWahl::openProgram, this, [this](int ofenNr, int p) { showSteps(ofenNr, p); });
        connect(m_progWahl, &KM_ProgWahl::closed, this, [this] {
            if (m_progWahlFenster)
                m_progWahlFenster->hide();
        });
    }
    m_progWahl->load();
    showChild(m_progWahl, m_progWahlFenster);
}

void KM_MDI::showSteps(int ofenNr, int p)
{
    if (!m_schritte) {
        m_schritte = new KM_Schritte;
        connect(m_schritte, &KM_Schritte::closed, this, [this] {
            if (m_schritteFenster)
                m_schritteFenster->hide();
        });
    }
    // The editor holds one program; a changed one is asked about first.
    if (m_schritteFenster && m_schritteFenster->isVisible() && !m_schritte->close())
        return;
    if (!m_schritte->onOpen(ofenNr, p))
        return;
    showChild(m_schritte, m_schritteFenster);
}

void KM_MDI::showProgramView()
{
    if (!m_progView) {
        m_progView = new KM_ProgView;
        connect(m_progView, &KM_ProgView::closed, this, [this] {
            if (m_progViewFenster)
                m_progViewFenster->hide();
        });
    }
    m_progView->onOpen();
    showChild(m_progView, m_progViewFenster);
}

void KM_MDI::showControllerParameters()
{
    if (!m_regPar)
        m_regPar = new KM_RegPar;
    showChild(m_regPar, m_regParFenster);
    m_regPar->refresh();
}

void KM_MDI::showSettings()
{
    if (!m_parameter) {
        m_parameter = new KM_Parameter;
        connect(m_parameter, &KM_Parameter::completed, this, [this] {
            if (m_parameterFenster)
                m_parameterFenster->hide();
        });
    } else if (!m_parameterFenster || !m_parameterFenster->isVisible()) {
        m_parameter->onOpen();
    }
    showChild(m_parameter, m_parameterFenster);
}

void KM_MDI::showSystem()
{
    if (!m_system) {
        m_system = new KM_System;
        connect(m_system, &KM_System::completed, this, [this] {
            if (m_systemFenster)
                m_systemFenster->hide();
        });
    }
    if (!m_systemFenster || !m_systemFenster->isVisible())
        m_system->onOpen(plant.Seite_Ofen >= 1 ? plant.Seite_Ofen : 1);
    m_systemFenster = showChild(m_system, m_systemFenster);
}

void KM_MDI::curveChanged()
{
    if (m_kurve)
        m_kurve->refreshLive();
}

void KM_MDI::Kurve_Online()
{
    if (m_menue)
        m_menue->Kurve_Online();
}

void KM_MDI::showValueList()
{
    if (!m_liste) {
        m_liste = new KM_Liste;
        connect(m_liste, &KM_Liste::closed, this, [this] {
            m_liste->close();
            if (m_listeFenster)
                m_listeFenster->close();
        });
    }
    showChild(m_liste, m_listeFenster);
    m_liste->onOpen();
    // The focus goes along, so that the button that opened the list does not
    // bring the curve window back over it.
    m_liste->CSV_LIST()->setFocus();
}

void KM_MDI::showView16()
{
    if (!m_kurve)
        return;
    KM_View16 view(m_kurve);
    m_view16 = &view;
    connect(&view, &KM_View16::seiteGeaendert, m_kurve, &KM_Kurve::setCaptions);
    view.onOpen();
    view.exec();
    if (plant.Aktive_Seite == 7)
        plant.Aktive_Seite = 2;
}

void KM_MDI::showElementView(int ofenNr)
{
    if (!m_sntStrom) {
        m_sntStrom = new KM_SNTStrom;
        connect(m_sntStrom, &KM_SNTStrom::backToLivePage, this, [this] {
            if (m_sntFenster)
                m_sntFenster->hide();
            showMenu();
        });
    }
    showChild(m_sntStrom, m_sntFenster);
    m_sntStrom->onOpen(ofenNr);
}

QWidget *KM_MDI::druckFenster() const
{
    switch (plant.Aktive_Seite) {
    case 1: return m_schritte;
    case 2: return m_kurve;
    case 3: return m_menue;
    case 4: return m_progView;
    case 6: return m_sntStrom;
    case 7: return m_view16;
    default: return nullptr;
    }
}

void KM_MDI::mnuPrintForm(bool pdf)
{
    QWidget *fenster = druckFenster();
    if (!fenster)
        return;
    const QString name = plant.Aktive_Seite == 2 ? QFileInfo(plant.Kurve_Datei).completeBaseName()
                                                  : fenster->objectName();
    outputWindow(fenster, pdf, plant.Pfad[3] + QLatin1Char('/') + name + QStringLiteral(".pdf"),
                     plant.Aktive_Seite == 2);
}

void KM_MDI::showCurve(const QString &datei)
{
    if (!m_kurve) {
        m_kurve = new KM_Kurve;
        m_kurveFenster = m_mdi->addSubWindow(m_kurve);
        m_kurveFenster->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_kurve, &KM_Kurve::loadRequested, this, [this] { showBatchBrowser(); });
        connect(m_kurve, &KM_Kurve::liste, this, [this] { showValueList(); });
        connect(m_kurve, &KM_Kurve::strom, this, [this] { showView16(); });
        connect(m_kurve, &KM_Kurve::backToLivePage, this, [this] {
            m_kurveFenster->close();
            showMenu();
        });
        // The curve is the page in front for printing while its window is active.
        connect(m_kurveFenster, &QMdiSubWindow::windowStateChanged, this,
                [](Qt::WindowStates, Qt::WindowStates neu) {
                    if (neu & Qt::WindowActive)
                        plant.Aktive_Seite = 2;
                    else if (plant.Aktive_Seite == 2)
                        plant.Aktive_Seite = 0;
                });
    }
    plant.Kurve_Datei = datei;
    plant.CSV_Datei = csvTarget(); // also for a batch opened from the furnace page
    m_kurve->load();
    m_kurveFenster->showMaximized();
    m_mdi->setActiveSubWindow(m_kurveFenster);
    // The window's focus goes with it: when the main window is activated
    // later (a batch of the command line or of a second start), the area
    // brings up the child holding the focus, else the live page again.
    m_kurve->setFocus();
}

void KM_MDI::viewerMenus()
{
    // Programs, messages, settings and system data belong to the station that
    // supervises the plant; the viewer shows recorded batches only.
    for (int i : {3, 4, 5, 6, 7})
        mnuform(i, false);
    m_mnuProgView->setEnabled(false);
    m_mnuMeldConfig->setEnabled(false);
    m_mnuImport->setEnabled(false);
    m_mnuRegler->setEnabled(false);
}

void KM_MDI::bringToFront(const QString &datei)
{
    if (isMinimized())
        showNormal();
    show();
    raise();
    activateWindow();
    if (!datei.isEmpty())
        showCurve(datei);
}

void KM_MDI::showBatchBrowser()
{
    if (!m_tempDatei) {
        m_tempDatei = new KM_TempDatei;
        m_tempFenster = m_mdi->addSubWindow(m_tempDatei);
        m_tempFenster->setWindowFlag(Qt::WindowMinMaxButtonsHint, false);
        connect(m_tempDatei, &KM_TempDatei::batchChosen, this, [this] { showCurve(plant.Kurve_Datei); });
    }
    m_tempDatei->load();
    m_tempFenster->resize(1180, 620);
    m_tempFenster->show();
    m_mdi->setActiveSubWindow(m_tempFenster);
}

void KM_MDI::showLogBook(int ofenNr)
{
    if (!m_logdaten) {
        m_logdaten = new KM_Logdaten;
        QMdiSubWindow *w = m_mdi->addSubWindow(m_logdaten);
        w->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_logdaten->load(ofenNr);
    m_logdaten->parentWidget()->show();
    m_mdi->setActiveSubWindow(qobject_cast<QMdiSubWindow *>(m_logdaten->parentWidget()));
}

void KM_MDI::arrangeWindows(Qt::Orientation richtung)
{
    QList<QMdiSubWindow *> fenster;
    for (QMdiSubWindow *w : m_mdi->subWindowList())
        if (!w->isMinimized() && w->isVisible())
            fenster.append(w);
    if (fenster.isEmpty())
        return;
    // "untereinander": full width, one below the other; "nebeneinander": full
    // height, side by side.
    const QRect flaeche = m_mdi->viewport()->rect();
    const int n = int(fenster.size());
    for (int i = 0; i < n; ++i) {
        QMdiSubWindow *w = fenster[i];
        w->showNormal();
        if (richtung == Qt::Vertical) {
            const int h = flaeche.height() / n;
            w->setGeometry(0, i * h, flaeche.width(), i == n - 1 ? flaeche.height() - i * h : h);
        } else {
            const int b = flaeche.width() / n;
            w->setGeometry(i * b, 0, i == n - 1 ? flaeche.width() - i * b : b, flaeche.height());
        }
    }
}

void KM_MDI::mnuSchliessen_Click()
{
    // The live page stays; every other child form closes.
    QMdiSubWindow *w = m_mdi->activeSubWindow();
    if (w && w != m_menueFenster)
        w->close();
}

void KM_MDI::languagePicked(int sprache)
{
    plant.Sprache = static_cast<u8>(sprache);
    Sprachumschalt(); // re-captions through the screen
}

void KM_MDI::closeEvent(QCloseEvent *e)
{
    e->accept();
    Programm_Ende();
}

} // namespace kal
