#pragma once
// The demo plant and the station's main window in this process, as
// `kalmeron --demo` runs them, for the end-to-end tests of the forms; the
// waits are bounded loops of the event loop, nothing is timed.

#include "app/demo.h"
#include "config/languages.h"
#include "core/plant_state.h"
#include "station/shutdown.h"
#include "support/fresh.h"
#include "views/KM_MDI.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QTcpServer>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace kal::test {

inline void noExit(int) {}

/// Runs the event loop until `fertig` holds or `ms` of wall time passed.
template <typename F>
inline bool waitUntil(F fertig, int ms)
{
    QDeadlineTimer frist(ms);
    while (!fertig() && !frist.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    return fertig();
}

inline void saveSnapshot(QWidget &w, const QString &name)
{
    QDir().mkpath(QStringLiteral(KALMERON_SHOTS));
    w.grab().save(QStringLiteral(KALMERON_SHOTS "/") + name);
}

/// Switches the station's language as the settings do.
inline void setLanguage(int sprache)
{
    plant.Sprache = static_cast<u8>(sprache);
    Sprachumschalt();
}

inline int freeTcpPort()
{
    QTcpServer s;
    s.listen(QHostAddress::LocalHost, 0);
    return s.serverPort();
}

/// The main window over a plant a test prepared, with the test's dialogs and
/// screen, every channel in the standard colours of the configuration.
inline std::unique_ptr<KM_MDI> testFenster(Dialogs &dlg)
{
    for (int slot = 0; slot < SLOTS; ++slot)
        for (int k = 0; k < 18; ++k)
            plant.Kanal_Farbe(slot, k) = k + 8;
    auto w = std::make_unique<KM_MDI>();
    setDialogs(&dlg);
    setScreen(w.get());
    w->resize(1400, 860);
    w->show();
    w->captionMenus();
    return w;
}

/// The demo plant and the station's main window in this process.
class DemoStation : public FreshProcess {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        FreshProcess::SetUp();
        plant.Daten_Ordner_Option = dir.path();
        plant.Modbus_Port = freeTcpPort();
        QString fehler;
        ASSERT_TRUE(demo.start(true, &fehler)) << qPrintable(fehler);
        setEndProcess(noExit); // after the demo's fresh plant
        w = std::make_unique<KM_MDI>();
        setDialogs(&dlg); // no modal box may stop the test
        w->resize(1280, 800);
        w->show();
        w->load();
        ASSERT_NE(w->menuePage(), nullptr);
    }
    void TearDown() override
    {
        Programm_Ende();
        w.reset();
        FreshProcess::TearDown();
    }
    bool online(int panel) const
    {
        return w->panelText(panel).startsWith(plant.Sprachtext(plant.Sprache, 9));
    }
    bool allOnline() const
    {
        for (int p = 1; p <= OEFEN; ++p)
            if (!online(p))
                return false;
        return true;
    }

    static constexpr int OEFEN = 5; ///< furnaces of the demo plant
    QTemporaryDir dir;
    Demo demo;
    ScriptedDialogs &dialogs = dlg;
    std::unique_ptr<KM_MDI> w;
};

} // namespace kal::test
