// Batch file names: fixed widths, because the browser reads number and date
// back by position.

#include "recording/batch_names.h"

#include "support/fresh.h"

#include <QDir>

using namespace kal;
using namespace kal::test;

using BatchNames = FreshProcess;

TEST_F(BatchNames, LiveAndImportNames)
{
    EXPECT_EQ(batchFileName(QStringLiteral("1203-017-GKD"), 5, 7, 3, 2012), QStringLiteral("D1203017GKD000005070312.OVD"));
    EXPECT_EQ(batchFileName(QStringLiteral("1203-017-GKD"), 1234567, 31, 12, 9), QStringLiteral("D1203017GKD234567311209.OVD"));
    EXPECT_EQ(batchFileName(QStringLiteral("12"), 1, 1, 1, 2020), QStringLiteral("D12        000001010120.OVD"));
    EXPECT_EQ(usbFileName(QStringLiteral("0708001QRV"), 42, 31, 12, 12), QStringLiteral("US0708001QRV00042311212.OVD"));
    // The import's number is the low word of the PLC's: it may be negative.
    EXPECT_EQ(usbFileName(QStringLiteral("0708001QRV"), -1, 1, 2, 2013), QStringLiteral("US0708001QRV99999010213.OVD"));

    plant.Charge_Ordner[0] = QStringLiteral("/daten/LogBuch/2012");
    plant.Charge_Ordner[1] = QStringLiteral("/sicher/2012");
    plant.Ofen_Serie[7] = QStringLiteral("1105-003-ABC");
    plant.Charge_Nr[7] = 815;
    plant.Charge_Start[7] = QStringLiteral("09.11.2012 23:59:58");
    buildBatchNames(7);
    const QString sep = QDir::separator();
    EXPECT_EQ(plant.Charge_Datei[7], "/daten/LogBuch/2012" + sep + "D1105003ABC000815091112.OVD");
    EXPECT_EQ(plant.Charge_Kopie[7], "/sicher/2012" + sep + "D1105003ABC000815091112.OVD");
    EXPECT_EQ(usbTargetPath(QStringLiteral("1105003ABC"), 7, 1, 2, 13), "/daten/LogBuch/2012" + sep + "US1105003ABC00007010213.OVD");
}
