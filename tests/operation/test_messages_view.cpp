// The message form's logic: the exact lines of both modes, the lamps, the
// button captions, acknowledge and SMS switching as frames on the wire, and
// when the form is told to redraw.

#include "operation_fixture.h"

#include <QLocale>

using namespace kal;
using namespace kal::test;

namespace {

class MessagesViewTest : public OperationTest {
protected:
    void SetUp() override
    {
        OperationTest::SetUp();
        ASSERT_TRUE(openMessageStore());
        onlineFurnace(2, QStringLiteral("Ofen 3"), QStringLiteral("2403-017-GKD"));
        plant.Meld_Anzahl[2] = 32;
        for (int i = 0; i < MELD_PRO_OFEN; ++i)
            plant.Meld_Text(2, i) = QStringLiteral("Meldung %1").arg(i + 1);
        plant.Meld_Text(2, 4) = QStringLiteral("Tür geöffnet");
        sockets[2]->state = SCK_CONNECTED;
    }
};

TEST_F(MessagesViewTest, NormalModeListsActiveMessagesOfTickedOnlineFurnaces)
{
    MeldEintrag(2, 5);
    MeldEintrag(2, 33); // the record behind the 32nd message is read as well
    MeldEintrag(2, 34);
    onlineFurnace(1, QStringLiteral("Ofen 2"), QStringLiteral("2403-016-GKD"));
    MeldEintrag(1, 1); // online but not ticked
    plant.Ofen_Aktiv[4] = -1;
    plant.Meld_Anzeige[4] = 1;
    MeldEintrag(4, 1); // ticked but offline
    plant.Meld_Anzeige[2] = 1;

    const QList<MessageLine> zeilen = Meld_Akt();
    ASSERT_EQ(zeilen.size(), 2);
    const QString datum =
        QLocale::system().toString(QDateTime(QDate(2024, 3, 5), QTime(14, 7, 9)), QLocale::ShortFormat);
    EXPECT_EQ(zeilen[0].text, datum + QStringLiteral("    3: Ofen 3            2403-017-GKD  05  Tür geöffnet          "));
    EXPECT_EQ(zeilen[1].text, datum + QStringLiteral("    3: Ofen 3            2403-017-GKD  33  Meldung 33            "));
}

TEST_F(MessagesViewTest, ConfigurationModeShowsEveryMessageWithItsBitsAndItemDataAndTheLamps)
{
    plant.Ofen_Online[2] = 0; // the configuration list does not ask for the link
    openMessages(true);
    plant.Meld_Anzeige[2] = 1;
    plant.SPS_Wort(2, 87) = i16(0x8000); // message 16 is bit 15
    plant.SPS_Wort(2, 690) = i16(0x8000);
    plant.SPS_Wort(2, 696) = i16(0x8000);
    plant.SPS_Wort(2, 694) = 0x0001; // N2 of message 17

    const QList<MessageLine> zeilen = Meld_Akt();
    ASSERT_EQ(zeilen.size(), 32);
    EXPECT_EQ(zeilen[15].text, QStringLiteral("    3: Ofen 3            2403-017-GKD  MW87:X15  16  Meldung 16            "
                                              "  AKTIV  Stop        SMS "));
    EXPECT_EQ(zeilen[16].text, QStringLiteral("    3: Ofen 3            2403-017-GKD  MW88:X00  17  Meldung 17            "
                                              "                N2       "));
    EXPECT_EQ((std::vector<int>{zeilen[15].daten, zeilen[16].daten, zeilen[31].daten}),
              (std::vector<int>{2 * 128 + 15, 2 * 128 + 16, 2 * 128 + 31}));
    EXPECT_EQ(messagesTitle(), QStringLiteral("ConfigMeldungen"));

    // The lamps follow the configuration word.
    plant.Meld_Config_Da[1] = -1;
    plant.Meld_Config(1, 9) = i16(0xAB05); // any message and N2 message active
    const auto lampen = CODE_Akt();
    EXPECT_FALSE(lampen[0].sichtbar);
    ASSERT_TRUE(lampen[1].sichtbar);
    EXPECT_EQ(QList<ColourValue>(lampen[1].farbe.begin(), lampen[1].farbe.end()),
              (QList<ColourValue>{Farbe_Stoerung, Farbe_Normal, Farbe_Stoerung, Farbe_Normal}));
}

TEST_F(MessagesViewTest, CaptionsBoxesAndQuittOfBothModes)
{
    plant.Ofen_UDP[2] = 0; // Modbus furnace
    std::array<QString, 8> nurZurueck;
    nurZurueck[7] = QStringLiteral("zurück");
    openMessages(false);
    EXPECT_EQ(messageKeyCaptions(), nurZurueck);
    EXPECT_EQ(messageKey(6, 0), KeyEffect::Nichts); // caption empty: nothing
    EXPECT_TRUE(sockets[2]->sent.isEmpty());

    // Quitt sends command 4 to word 30 of the furnace selected on the live page.
    plant.Seite_Ofen = 3;
    EXPECT_EQ(messageKeyCaptions()[6], QStringLiteral("Quitt Ofen 3          "));
    messageKey(6, -1); // only the captions
    EXPECT_TRUE(sockets[2]->sent.isEmpty());
    messageKey(6, 0);
    ASSERT_EQ(sockets[2]->sent.size(), 1);
    EXPECT_EQ(sockets[2]->sent[0], hex("00 00 00 00 00 09 01 10 00 1E 00 01 02 00 04"));
    EXPECT_EQ(messageKey(7, 0), KeyEffect::Schliessen);

    EXPECT_EQ(QStringList({messagesTitle(), boxCaption(2)}), QStringList({"Meldungen", "3:Ofen 3          "}));
    EXPECT_FALSE(boxVisible(5)); // not enabled: hidden in normal mode
    openMessages(true);
    EXPECT_TRUE(boxVisible(5));
    // No line chosen yet: no SMS caption; no acknowledge in this mode.
    EXPECT_EQ(messageKeyCaptions(), nurZurueck);
}

TEST_F(MessagesViewTest, SmsOnUpdatesTheWordSmsOffUpdatesWord96)
{
    plant.Ofen_UDP[2] = -1; // memory link furnace
    openMessages(true);
    plant.Meld_Anzeige[2] = 1;

    // Switching on: message 16, bit 15 of word 696.
    messageLineClicked(2 * 128 + 15);
    EXPECT_EQ(messageKeyCaptions()[2], QStringLiteral("SMS ON "));
    EXPECT_EQ(messageKey(2, 0), KeyEffect::Neu_Zeichnen);
    ASSERT_EQ(sockets[2]->sent.size(), 1);
    EXPECT_EQ(sockets[2]->sent[0], hex("42 00 0000 0000 0008 1B 57 02B8 0001 8000"));
    EXPECT_EQ(both(plant.SPS_Wort(2, 696), plant.SPS_Wort(2, 96)), both(i16(0x8000), i16(0)));
    EXPECT_EQ(messageKeyCaptions()[2], QStringLiteral("SMS OFF "));

    // Switching off: message 18, bit 1 of word 697. The new value goes to word
    // 97; word 697 keeps the old one until the next poll.
    plant.SPS_Wort(2, 697) = 0x0003;
    messageLineClicked(2 * 128 + 17);
    EXPECT_EQ(messageKeyCaptions()[2], QStringLiteral("SMS OFF "));
    messageKey(2, 0);
    ASSERT_EQ(sockets[2]->sent.size(), 2);
    EXPECT_EQ(sockets[2]->sent[1], hex("42 00 0000 0000 0008 1B 57 02B9 0001 0001"));
    EXPECT_EQ(both(plant.SPS_Wort(2, 97), plant.SPS_Wort(2, 697)), both(i16(1), i16(3)));
}

TEST_F(MessagesViewTest, FormRedrawsOnlyWhileShown)
{
    MeldEintrag(2, 1); // form not shown
    openMessages(false);
    MeldEintrag(2, 2);
    openMessages(true);
    MeldEintrag(2, 3); // configuration mode: lamps only
    hooks.Alarme_Refresh(2, true);
    messagesClosed();
    MeldEintrag(2, 4);
    EXPECT_EQ(scr.alarme, (QList<bool>{true, false, true})); // true: the list as well as the lamps
}

} // namespace
