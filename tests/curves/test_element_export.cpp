// The element history as CSV: one row a day, newest first, each value the
// day's mean figure times 100; the head lines; the checks before writing.

#include "curves/csv_writer.h"
#include "curves/element_export.h"
#include "recording/element_file.h"
#include "support/files.h"
#include "support/fresh.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace kal;
using namespace kal::test;

namespace {

class ElementExport : public FreshProcess {
protected:
    QTemporaryDir dir;
    QString csv;

    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        FreshProcess::SetUp();
        plant.Pfad[0] = dir.path();
        plant.Pfad[3] = dir.filePath("CSV");
        QDir().mkpath(plant.Pfad[3]);
        plant.Ofen_Serie[0] = QStringLiteral("2401-017-ABC");
        plant.Ofen_Bezeichnung[0] = QStringLiteral("Haerterei Nord");
        plant.Element_Spuren[0] = 4; // fewer than 12: twelve columns all the same
        csv = QDir(plant.Pfad[3]).filePath("RX_2401-017-ABC.CSV");
    }
    /// History records 2.. with the first figure given, the others 0.
    void writeHistory(std::vector<std::pair<const char *, float>> saetze)
    {
        ElementRecord kopf;
        kopf.Anzahl = i16(saetze.size() + 1);
        writeElement(rxFilePath(1), 1, kopf);
        int nr = 2;
        for (const auto &[zeit, rx] : saetze) {
            ElementRecord s;
            s.Anzahl = 2;
            s.Zeit = QString::fromLatin1(zeit);
            s.RX[0] = rx;
            s.RX[11] = 1.0f;
            writeElement(rxFilePath(1), nr++, s);
        }
    }
    QByteArray csvBytes() const { return readFile(csv); }
};

const QByteArray KOPF = "Haerterei Nord\r\n2401-017-ABC\r\n\r\n";
const QByteArray SPALTEN = "Datum;Zeit;1;2;3;4;5;6;7;8;9;10;11;12\r\n";

TEST_F(ElementExport, OneRowADayNewestFirstEachDayBeforeTheOneAbove)
{
    EXPECT_FALSE(ElementStatistik(1)); // no history, no file
    EXPECT_FALSE(QFile::exists(csv));
    // Out of order in the ring: the list sorts them by time.
    writeHistory({{"12.03.2024 09:00:00", 3.0f}, {"09.03.2024 10:00:00", 1.5f}, {"09.03.2024 11:00:00", 2.456f}});
    ASSERT_TRUE(ElementStatistik(1));
    EXPECT_EQ(csvBytes(), KOPF + "Anfang   09.03.2024 10:00:00\r\nEnde     12.03.2024 09:00:00\r\n" + SPALTEN +
                           "12.03.24;00:00:00;300;0;0;0;0;0;0;0;0;0;0;100\r\n"
                           "11.03.24;00:00:00;198;0;0;0;0;0;0;0;0;0;0;100\r\n");

    // An existing file is replaced only on yes, a missing folder created only
    // on yes. The texts of both questions are checked with the batch export,
    // which asks the same.
    writeFile(csv, "old");
    dlg.answers = {0};
    EXPECT_FALSE(ElementStatistik(1));
    EXPECT_EQ(csvBytes(), "old");
    QDir(plant.Pfad[3]).removeRecursively();
    dlg.answers = {0, 1};
    EXPECT_FALSE(ElementStatistik(1));
    EXPECT_TRUE(ElementStatistik(1));
    EXPECT_EQ(dlg.shown.size(), 3u);
    EXPECT_TRUE(csvBytes().startsWith(KOPF));
}

} // namespace
