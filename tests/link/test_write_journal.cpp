// The write journal: one line per write that leaves for a PLC, at the one
// place all writes pass, with the cause a caller named or the address tells;
// appended across restarts; kept in memory while the file cannot be written.

#include "core/word_map.h"
#include "link/frames.h"
#include "link/write_journal.h"
#include "support/scripted_plant.h"

#include <QFile>
#include <QTemporaryDir>

using namespace kal;
using namespace kal::test;

namespace {

class Journal : public ScriptedPlant {
protected:
    QTemporaryDir dir;

    void SetUp() override
    {
        ScriptedPlant::SetUp();
        ASSERT_TRUE(dir.isValid());
        plant.Pfad[0] = dir.path();
    }
    QStringList journalLines()
    {
        QFile f(journalFile());
        if (!f.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(f.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    /// The columns after the time.
    static QStringList columns(const QString &zeile) { return zeile.split(QLatin1Char('\t')).mid(1); }
};

TEST_F(Journal, LineLayout)
{
    const QDateTime t(QDate(2026, 3, 4), QTime(5, 6, 7, 89));
    EXPECT_EQ(journalLine(t, 2, QStringLiteral("1305-042-SGO "), 300, {1, -1, 0x1A2b}, QStringLiteral("a\tb")),
              QStringLiteral("2026-03-04 05:06:07.089\t2\t1305-042-SGO\t300\t3\t0001 FFFF 1A2B\ta b"));
}

TEST_F(Journal, QueuedWritesAndCommandsOneLineEachWithTheirCause)
{
    Ofen(0, true);
    Ofen(1, false);
    plant.Ofen_Serie[0] = QStringLiteral("1203-017-KHP");
    plant.Adr_Trigger[0] = 90;
    plant.Prog_Page[1] = 388;

    // A program block with its named cause, over the memory link.
    for (int i = 0; i < 3; ++i)
        plant.SPS_Wort(0, 100 + i) = i16(i + 1);
    plant.Write_Adr[0] = 100;
    plant.Write_Len[0] = 3;
    nameWriteCause(0, QStringLiteral("program \"Anlassen\" -> active program"));
    int schritt = 0;
    exchange(0, schritt);
    // The log acknowledgement queued next has no named cause: the address tells it.
    plant.SPS_Wort(0, 90) = 0;
    plant.Write_Adr[0] = 90;
    plant.Write_Len[0] = 1;
    exchange(0, schritt);
    // Commands by Modbus: acknowledge, the page word, a named cause.
    SEND_BEF(2, word::COMMAND, 4);
    SEND_BEF(2, 388, 103);
    SEND_BEF(2, 58, 16, QStringLiteral("clock step by hand"));
    // A write lost on a closed channel leaves no line.
    sock[1]->state = SCK_CLOSED;
    SEND_BEF(2, word::COMMAND, 1);

    const QStringList z = journalLines();
    ASSERT_EQ(z.size(), 5) << qPrintable(z.join('\n'));
    EXPECT_EQ(columns(z[0]), (QStringList{"1", "1203-017-KHP", "100", "3", "0001 0002 0003",
                                          "program \"Anlassen\" -> active program"}));
    EXPECT_EQ(columns(z[1]), (QStringList{"1", "1203-017-KHP", "90", "1", "0000", "log block taken"}));
    EXPECT_EQ(columns(z[2]).mid(2), (QStringList{"30", "1", "0004", "acknowledge"}));
    EXPECT_EQ(columns(z[3]).mid(2), (QStringList{"388", "1", "0067", "page word 103"}));
    EXPECT_EQ(columns(z[4]).mid(2), (QStringList{"58", "1", "0010", "clock step by hand"}));
    // Each frame that went out is the one journaled.
    EXPECT_EQ(both(sock[0]->sent.size(), sock[1]->sent.size()), both(2, 3));
}

TEST_F(Journal, NamedCauseGoesWithItsQueueEvenWhenTheWriteIsLost)
{
    Ofen(0, false);
    sock[0]->state = SCK_CONNECTED;
    sock[0]->refuseSends = true;
    plant.Write_Adr[0] = 100;
    plant.Write_Len[0] = 1;
    nameWriteCause(0, QStringLiteral("program"));
    int schritt = 0;
    EXPECT_THROW(exchange(0, schritt), RunError); // the refused Modbus write travels to the cycle
    sock[0]->refuseSends = false;
    plant.Write_Adr[0] = 58;
    plant.Write_Len[0] = 1;
    plant.SPS_Wort(0, 58) = 32;
    exchange(0, schritt);
    const QStringList z = journalLines();
    ASSERT_EQ(z.size(), 1);
    EXPECT_EQ(columns(z[0]).last(), QStringLiteral("clock step 32"));
}

TEST_F(Journal, AppendsAcrossRestartsAndWaitsForAWritableFolder)
{
    Ofen(0, true);
    SEND_BEF(1, word::COMMAND, 4);
    resetPlant(); // a restart: the journal is opened anew
    plant.Pfad[0] = dir.filePath(QStringLiteral("fehlt/noch"));
    sock = installScriptedSockets();
    Ofen(0, true);
    SEND_BEF(1, word::COMMAND, 2);
    SEND_BEF(1, word::COMMAND, 1);
    EXPECT_EQ(journalLines().size(), 0); // the folder is missing: the lines wait
    plant.Pfad[0] = dir.path();
    SEND_BEF(1, word::COMMAND, 4);
    const QStringList z = journalLines();
    QStringList causes;
    for (const QString &zeile : z)
        causes << columns(zeile).last();
    EXPECT_EQ(causes, QStringList({"acknowledge", "program stop", "program start", "acknowledge"}));
}

} // namespace
