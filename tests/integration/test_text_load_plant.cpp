// The text load end to end: a headed furnace of the simulator comes online,
// the station fetches its message texts and track names through the page
// word, keeps them in the message store, and the header of the next batch
// file carries the PLC's texts.

#include "core/conversions.h"
#include "core/dates.h"
#include "core/plant_state.h"
#include "operation/message_store.h"
#include "plant_fixture.h"
#include "recording/batch_file.h"
#include "recording/batch_record.h"
#include "sim/log_blocks.h"


using namespace kal;
using namespace kal::test;

namespace {

constexpr int F = 0;
constexpr i32 CHARGE = 31;

class TextLoadPlant : public PlantFixture {
protected:
    QStringList texte;

    void SetUp() override
    {
        PlantFixture::SetUp();
        sim::FurnaceDescription d = furnaceDescription(F, sim::Protocol::Modbus, true, 100);
        for (int n = 1; n <= 48; ++n)
            texte << QStringLiteral("SPS Meldung Nr. %1").arg(n);
        texte[3] = QString::fromUtf8("Tür offen, Heizung aus");
        d.messageTexts = texte;
        d.trackNames = {QStringLiteral("Regler"), QStringLiteral("Charge"), QStringLiteral("Decke"),
                        QStringLiteral("Argon")};
        d.pageNames = {QStringLiteral("Schutzgasofen"), QStringLiteral("Werk Nord")};
        beschreibung.furnaces = {d};
        ASSERT_NO_FATAL_FAILURE(startSimPlant());
        writeConfig();
        startStation();
    }
};

} // namespace

TEST_F(TextLoadPlant, TextsComeThroughThePageWordIntoTheStoreAndTheNextBatchHeader)
{
    bool begonnen = false;
    ASSERT_TRUE(runCycles([&] {
        begonnen = begonnen || plant.Meld_Seite[F] >= 0;
        return begonnen && plant.Meld_Seite[F] == -1;
    }));
    ASSERT_TRUE(runCycles([&] { return plc(F).lastWritten(388) == 0; })) << "the station clears the page word";
    QList<int> seiten;
    for (const sim::StationWrite &w : plc(F).writes())
        if (w.address == 388)
            seiten << w.words.value(0);
    EXPECT_EQ(seiten, (QList<int>{122, 117, 116, 115, 114, 113, 112, 111, 110, 0}));
    EXPECT_EQ(plant.Spur(F, 3), QStringLiteral("Argon"));
    EXPECT_EQ(readMessage(messageRecordNumber(F, 4)).Text, Latin1Bytes(fixedWidth(texte[3], 40)));

    // The next batch: its header records 8..39 are the PLC's texts.
    sim::SampleValues v;
    v.stamp = now().addSecs(-60);
    v.actual = 8000;
    v.batch = CHARGE;
    plc(F).queueBlock(sim::groupBlock(v));
    ASSERT_TRUE(runCycles([&] { return plc(F).log().taken().size() == 1; }));
    const QString pfad = plant.Charge_Datei[F];
    BatchFile datei;
    ASSERT_TRUE(datei.openRead(pfad)) << pfad.toStdString();
    for (int i = 0; i < 32; ++i)
        EXPECT_EQ(datei.read(8 + i), messageTextRecord(texte[i])) << "record " << 8 + i;
}
