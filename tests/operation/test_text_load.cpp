// The text load through the page word: the requests the station sends, what
// it takes from each answered page, what reaches the message store and when
// a page is asked again.

#include "operation_fixture.h"

#include "core/conversions.h"
#include "link/polling.h"
#include "operation/text_load.h"

using namespace kal;
using namespace kal::test;

namespace {

constexpr int F = 2;      ///< furnace index under test
constexpr int NR = F + 1; ///< its number

QString plcText(int n)
{
    return QStringLiteral("Meldetext %1 der SPS").arg(n);
}

class TextLoadTest : public OperationTest {
protected:
    QStringList texte; ///< texts of messages 1..48 in the PLC

    void SetUp() override
    {
        OperationTest::SetUp();
        for (int n = 1; n <= 48; ++n)
            texte << plcText(n);
        ASSERT_TRUE(openMessageStore());
    }

    /// A furnace with a version word and its identity block at `basis`.
    void furnace(int basis, bool udp)
    {
        const i16 typ = static_cast<i16>(0x8000 | basis);
        plant.Ofen_Typ[NR] = typ;
        setFurnaceLayout(F, typ);
        plant.Ofen_UDP[F] = udp ? TRUE16 : FALSE16;
        plant.Ofen_Aktiv[F] = plant.Ofen_Online[F] = TRUE16;
        sockets[F]->state = SCK_CONNECTED;
        for (int k = 0; k < 4; ++k)
            plant.Spur(F, k) = QStringLiteral("Spur %1").arg(k + 1);
    }

    void putText(int adr, int worte, const QString &text)
    {
        const QByteArray b = Latin1Bytes(fixedWidth(text, 2 * worte));
        for (int i = 0; i < worte; ++i)
            plant.SPS_Wort(F, adr + i) = i16(uint8_t(b[2 * i]) | uint8_t(b[2 * i + 1]) << 8);
    }

    /// Address and value of the last command the station sent (memory link
    /// write or Modbus single command: both end with address ... value).
    std::pair<int, int> lastCommand() const
    {
        const QByteArray r = sockets[F]->sent.back();
        const int at = plant.Ofen_UDP[F] ? 10 : 8;
        auto wort = [&](int pos) { return int(i16(uint8_t(r[pos]) << 8 | uint8_t(r[pos + 1]))); };
        return {wort(at), wort(r.size() - 2)};
    }

    /// The PLC's answer to a request: the page in the window, 1000 + request
    /// in the page word.
    void plcAnswers(int anfrage)
    {
        for (int a = 300; a < 400; ++a)
            plant.SPS_Wort(F, a) = 0;
        if (anfrage == 122) {
            const char *spur[] = {"Regler", "Charge", "Decke", "Argon"};
            for (int k = 0; k < 4; ++k)
                putText(300 + 8 * k, 4, QString::fromLatin1(spur[k]));
            putText(332, 8, QStringLiteral("Haubenofen"));
            putText(340, 8, QStringLiteral("Halle 3"));
            for (int i = 0; i < 22; ++i)
                plant.SPS_Wort(F, 348 + i) = i16(500 + i);
        } else {
            const int p = anfrage - 110;
            for (int k = 0; k < 4; ++k)
                putText(300 + 20 * k, 11, texte.value(4 * p + k));
        }
        plant.SPS_Wort(F, plant.Prog_Page[F]) = i16(1000 + anfrage);
    }

    /// Runs a whole load as a prompt PLC answers it; the requests in order.
    QList<int> load()
    {
        QList<int> anfragen;
        plant.Meld_Seite[F] = TEXT_LOAD_START;
        Load_Text(NR);
        for (int guard = 0; guard < 40 && plant.Meld_Seite[F] >= 0; ++guard) {
            const auto [adr, wert] = lastCommand();
            EXPECT_EQ(adr, plant.Prog_Page[F]);
            anfragen << wert;
            plcAnswers(wert);
            Load_Text(NR);
        }
        anfragen << lastCommand().second;
        return anfragen;
    }

    QString storedText(int n) { return Text_Sauber(Latin1Text(recordBytes(F * 100 + n).left(40))); }
};

QList<int> requests(int first, int last)
{
    QList<int> r{122};
    for (int p = first; p >= last; --p)
        r << p;
    return r << 0;
}

} // namespace

TEST_F(TextLoadTest, IdentityAt50ReadsNoTrackNamesButTwelvePages)
{
    furnace(50, true);
    EXPECT_EQ(load(), requests(121, 110));
    // The page word is cleared at the end; the codes are taken, the track names not.
    EXPECT_EQ((std::vector<int>{plant.Meld_Seite[F], plant.SPS_Wort(F, 388), plant.Code_A(F, 0), plant.Code_B(F, 10)}),
              (std::vector<int>{-1, 0, 500, 521}));
    EXPECT_EQ(plant.Spur(F, 0), QStringLiteral("Spur 1"));
    for (int n : {1, 4, 5, 32, 33, 48}) {
        EXPECT_EQ(plant.Meld_Text(F, n - 1), plcText(n).left(22));
        EXPECT_EQ(storedText(n), plcText(n).left(22)) << n;
    }
    EXPECT_TRUE(QFile::exists(QDir(dir.path()).filePath(QStringLiteral("Kalmeron.DAT"))))
        << "the configuration is saved after the load";
}

TEST_F(TextLoadTest, OtherFurnacesReadNamesAndCodesAndEightPages)
{
    furnace(500, false);
    EXPECT_EQ(load(), requests(117, 110));
    // The first request went out as a Modbus single command to word 388.
    EXPECT_EQ(sockets[F]->sent.front(), hex("00 00 00 00 00 09 01 10 01 84 00 01 02 00 7A"));
    EXPECT_EQ(QStringList({plant.Spur(F, 0), plant.Spur_Titel(F, 1)}), QStringList({"Regler", "Halle 3"}));
    EXPECT_TRUE(Ist_Argon(NR));
    // The store's layout of the track records is checked with the store.
    EXPECT_EQ(recordBytes(F * 100 + 97).left(8) + recordBytes(F * 100 + 98).left(16), "Regler  Haubenofen      ");
    // A furnace with its block at 500 stores 32 messages; 33 is never asked.
    EXPECT_EQ(QStringList({storedText(32), storedText(33), plant.Meld_Text(F, 32)}),
              QStringList({plcText(32).left(22), "", ""}));
}

TEST_F(TextLoadTest, APageThatIsNotTheAnswerIsAskedAgainClearRequestsAreServedAProgramTransferFinishes)
{
    furnace(100, true);
    plant.Meld_Seite[F] = 7; // pages 1..6 are still to come: request 116
    plant.SPS_Wort(F, 388) = 1117;
    Load_Text(NR);
    EXPECT_EQ(plant.Meld_Seite[F], 7) << "the page before does not count again";
    EXPECT_EQ(lastCommand(), std::make_pair(388, 116));

    plant.SPS_Wort(F, 388) = 170;
    Load_Text(NR);
    EXPECT_EQ(lastCommand(), std::make_pair(388, 0));
    EXPECT_EQ(plant.Meld_Seite[F], 7);

    plcAnswers(116);
    Load_Text(NR);
    EXPECT_EQ(both(plant.Meld_Seite[F], lastCommand().second), both(6, 115));
    EXPECT_EQ(plant.Meld_Text(F, 24), plcText(25).left(22));

    // A pending write holds the next request back; the page is taken.
    plcAnswers(115);
    plant.Write_Len[F] = 1;
    const auto gesendet = sockets[F]->sent.size();
    Load_Text(NR);
    EXPECT_EQ(plant.Meld_Seite[F], 5);
    EXPECT_EQ(sockets[F]->sent.size(), gesendet);

    // A program transfer on the page word is left to finish.
    plant.Write_Len[F] = 0;
    plant.SPS_Wort(F, 388) = 103; // the program view asked for place 3
    Load_Text(NR);
    EXPECT_EQ(sockets[F]->sent.size(), gesendet);
    plant.SPS_Wort(F, 388) = 1103; // answered: the view takes it at this block
    Load_Text(NR);
    EXPECT_EQ(both(int(sockets[F]->sent.size()), plant.SPS_Wort(F, 388)), both(int(gesendet), 1103));
    Load_Text(NR); // the next block: the load goes on
    EXPECT_EQ(lastCommand(), std::make_pair(388, 114));
    EXPECT_EQ(plant.Meld_Seite[F], 5);
}

TEST_F(TextLoadTest, ComingOnlineStartsTheLoadOnlyWhereNoneIsCut)
{
    furnace(100, true);
    plant.Ofen_Online[F] = 0;
    plant.Meld_Seite[F] = -1; // as at start-up
    int schritt = 0;
    EXPECT_TRUE(checkConnection(F, QStringLiteral("P:3"), schritt));
    EXPECT_EQ(plant.Meld_Seite[F], TEXT_LOAD_START);

    // Cut at counter 7 by a lost link: back online, it goes on from there.
    plant.Meld_Seite[F] = 7;
    sockets[F]->state = SCK_CLOSED;
    sockets[F]->stateAfterConnect = SCK_CLOSED;
    CycleClock &uhr = cycleClock();
    double t = 0;
    uhr.Sekunden = [&t] { return t; };
    uhr.Nachgeben = [&t] { t += 1; };
    EXPECT_FALSE(checkConnection(F, QStringLiteral("P:3"), schritt));
    sockets[F]->state = SCK_CONNECTED;
    EXPECT_TRUE(checkConnection(F, QStringLiteral("P:3"), schritt));
    EXPECT_EQ(plant.Meld_Seite[F], 7);

    // A plain furnace has no text pages.
    plant.Ofen_Typ[2] = 3;
    plant.Ofen_Online[1] = 0;
    sockets[1]->state = SCK_CONNECTED;
    plant.Meld_Seite[1] = -1;
    EXPECT_TRUE(checkConnection(1, QStringLiteral("P:2"), schritt));
    EXPECT_EQ(plant.Meld_Seite[1], -1);
}
