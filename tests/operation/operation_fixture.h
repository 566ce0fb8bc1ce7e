#pragma once
// A clean plant for the operation tests: the language table filled, the
// station's clock pinned, the message store opened in a temporary data folder,
// the message log registered with the decoder, scripted sockets on every
// channel, and the forms' state (message form, live page) as at start-up.

#include "config/languages.h"
#include "core/dates.h"
#include "core/hooks.h"
#include "core/plant_state.h"
#include "support/files.h"
#include "support/fresh.h"
#include "support/hex.h"
#include "support/scripted_socket.h"
#include "operation/live_page.h"
#include "operation/message_store.h"
#include "operation/messages_view_model.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// Readable test output of texts.
inline void PrintTo(const QString &s, std::ostream *os)
{
    *os << '"' << s.toStdString() << '"';
}

namespace kal::test {

inline QDateTime wallTime(int y, int mo, int d, int h, int mi, int s)
{
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::UTC);
}

class OperationTest : public FreshProcess {
protected:
    QTemporaryDir dir;
    std::array<ScriptedSocket *, KANAL_MAX> sockets{};

    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        FreshProcess::SetUp();
        buildLanguageTable();
        plant.Pfad[0] = dir.path();
        setNow(wallTime(2024, 3, 5, 14, 7, 9));
        sockets = installScriptedSockets();
        // The decoder reaches the message log as the station wires it.
        hooks.MeldEintrag = MeldEintrag;
        hooks.Alarme_Refresh = messageConfigChanged;
    }

    QString storePath() const { return QDir(dir.path()).filePath(QStringLiteral("Kalmeron.mld")); }

    QByteArray storeBytes() const { return readFile(storePath()); }

    /// Bytes of record `nr` (from 1) as they are on disk.
    QByteArray recordBytes(int nr) const { return storeBytes().mid((nr - 1) * 62, 62); }

    /// A furnace that is online and polled, with its names.
    void onlineFurnace(int ofen, const QString &name, const QString &serie)
    {
        plant.Ofen_Aktiv[ofen] = -1;
        plant.Ofen_Online[ofen] = -1;
        plant.Ofen_Name[ofen] = name;
        plant.Ofen_Serie[ofen] = serie;
    }
};

} // namespace kal::test
