// Writes the seed corpora of the fuzz targets from real layouts:
//
//   receive targets  the station's conversation with the simulated furnaces
//                    of that kind, answer by answer, from the start-up until
//                    logged samples were recorded
//   batch_file       the batch files the station recorded in that conversation
//   curve_store      the same files, whole and in two halves with button presses
//   configuration    the configuration file of each plant
//   message_store    a store written by the station's own message log
//   site_texts       site files in the documented line form, and table rows
//   controller_names a controller names file with sections of two furnaces
//   dates            the text forms of dates the station writes and reads
//   program_file     a program file with two programs, and a label file
//   usb_source       sources of the three forms as a panel writes them
//
// Usage: fuzz_make_seeds <corpus folder>   (normally fuzz/corpus)

#include "config/language_files.h"
#include "config/languages.h"
#include "config/paths.h"
#include "core/dates.h"
#include "core/plant_state.h"
#include "operation/message_store.h"
#include "programs/program_file.h"
#include "recording/batch_record.h"
#include "sim/memory_link_codec.h"
#include "sim/modbus_codec.h"
#include "sim/plant.h"
#include "support/fuzz_support.h"
#include "support/receive.h"
#include "../../tests/support/usb_quelle.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <cstdio>
#include <cstdlib>

using namespace kal;
using namespace kal::fuzz;

namespace {

QString corpus;

void seed(const QString &target, const QString &name, const QByteArray &bytes)
{
    const QString ordner = corpus + QLatin1Char('/') + target;
    QDir().mkpath(ordner);
    if (!writeFile(ordner + QLatin1Char('/') + name, bytes)) {
        std::fprintf(stderr, "make_seeds: cannot write %s/%s\n", qPrintable(ordner), qPrintable(name));
        std::exit(1);
    }
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

/// The simulated PLC's answer to a frame the station sent on channel `kanal`;
/// empty when the PLC would not answer.
QByteArray answerOf(sim::SimPlant &sim, int kanal, QByteArray frame)
{
    sim::SimFurnace *ofen = kanal < OFEN_MAX ? sim.furnace(kanal) : nullptr;
    sim::WordSpace *raum = kanal == 8 ? static_cast<sim::WordSpace *>(sim.panel()) : ofen;
    if (!raum)
        return {};
    if (kanal == 8 || ofen->description().protocol == sim::Protocol::MemoryLink) {
        const sim::MemoryLinkRequest req = sim::parseMemoryLinkRequest(frame);
        if (!req.ok)
            return {};
        QVector<int16_t> worte;
        if (req.command == 'R')
            return raum->read(req.address, req.count, worte) ? sim::memoryLinkAnswer('R', worte)
                                                             : QByteArray();
        return raum->write(req.address, req.words, QStringLiteral("seed")) ? sim::memoryLinkAnswer('W', {})
                                                                           : QByteArray();
    }
    QByteArray einzeln;
    if (sim::takeModbusFrame(frame, einzeln) != sim::StreamTake::Frame)
        return {};
    QString urteil;
    bool gut = false;
    return sim::modbusAnswer(sim::parseModbusRequest(einzeln), *raum, QStringLiteral("seed"), urteil, gut);
}

/// Batch files recorded so far in the data folder.
QStringList batchFiles()
{
    QStringList l;
    QDirIterator it(dataFolder(), {QStringLiteral("*.OVD")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        l << it.next();
    l.sort();
    return l;
}

/// Length (two bytes, high first) and bytes, cut to what a length can say.
QByteArray mitLaenge(QByteArray bytes)
{
    bytes.truncate(0xFFFF);
    return QByteArray(1, char(bytes.size() >> 8)) + char(bytes.size() & 0xFF) + bytes;
}

/// A recorded batch file for the curve window: whole, and its first half
/// with the second half arriving for the live refresh after a page back,
/// a zoom in and a page forward.
void curveStoreSeeds(const QString &name, const QByteArray &datei)
{
    seed(QStringLiteral("curve_store"), name, QByteArray(1, '\0') + mitLaenge(datei));
    const qsizetype halb = datei.size() / 2 / SATZ_LAENGE * SATZ_LAENGE;
    seed(QStringLiteral("curve_store"), name + QStringLiteral("-live"),
         QByteArray("\x06\x00\x02\x01", 4) + mitLaenge(datei.left(halb)) + datei.mid(halb));
}

/// The conversation of the station with the furnaces of one kind. Samples
/// come every second, so that logged records reach the recorder early.
void receiveSeeds(const QString &target, Kanal_Art art)
{
    receiveSetUp(art);
    const QByteArray konfiguration = readAll(dataFile(CONFIG_DATEI));
    seed(QStringLiteral("configuration"), target + QStringLiteral(".DAT"), konfiguration);

    sim::PlantDescription d = plantOf(art);
    for (sim::FurnaceDescription &f : d.furnaces)
        f.sampleSeconds = 1;
    sim::SimPlant sim(d, QDateTime(QDate(2026, 3, 15), QTime(9, 59, 50), Qt::UTC));
    stationStart();

    QByteArray gespraech;
    QByteArray zerteilt; // each answer in two pieces, as TCP may deliver it
    int aufgezeichnet = -1; // ticks since the first record was kept
    for (int t = 0; t < 6000 && aufgezeichnet < 300; ++t) {
        sim.advance(100);
        QByteArray rahmen;
        const int kanal = tick(&rahmen);
        const QByteArray antwort = kanal >= 0 ? answerOf(sim, kanal, rahmen) : QByteArray();
        if (!antwort.isEmpty()) {
            gespraech += answerRecord(true, true, kanal, antwort);
            const qsizetype halb = antwort.size() / 2;
            zerteilt += answerRecord(true, true, kanal, antwort.left(halb)) +
                        answerRecord(false, true, kanal, antwort.mid(halb));
            // A command the station sends while it takes an answer (the
            // page word of the text load) is answered at once, without a tick.
            QByteArray befehl;
            for (int k = deliver(kanal, antwort, &befehl), n = 0; k >= 0 && n < 8; ++n) {
                const QByteArray a = answerOf(sim, k, befehl);
                gespraech += answerRecord(false, true, k, a);
                zerteilt += answerRecord(false, true, k, a);
                k = deliver(k, a, &befehl);
            }
        } else {
            gespraech += answerRecord(true, false, 0, {});
            zerteilt += answerRecord(true, false, 0, {});
        }
        if (t == 40) {
            seed(target, QStringLiteral("start"), gespraech);
            seed(target, QStringLiteral("start-in-pieces"), zerteilt);
        }
        if (aufgezeichnet >= 0)
            ++aufgezeichnet;
        else if (!batchFiles().isEmpty())
            aufgezeichnet = 0;
    }
    seed(target, QStringLiteral("recorded"), gespraech);

    const QList<QString> dateien = batchFiles();
    if (dateien.isEmpty()) {
        std::fprintf(stderr, "make_seeds: %s recorded no batch\n", qPrintable(target));
        std::exit(1);
    }
    for (const QString &pfad : dateien) {
        const QByteArray bytes = readAll(pfad);
        seed(QStringLiteral("batch_file"), target + QLatin1Char('-') + QFileInfo(pfad).fileName(),
             QByteArray(1, '\0') + bytes);
        curveStoreSeeds(target + QLatin1Char('-') + QFileInfo(pfad).fileName(), bytes);
    }
}

void messageStoreSeed()
{
    const QString ordner = freshRun();
    plant.Pfad[0] = ordner;
    plant.Ofen_Typ[1] = 3;
    plant.Ofen_Typ[2] = i16(0x9000 | 240); // a headed furnace with 48 messages
    openMessageStore();
    setMessageCount(0);
    setMessageCount(1);
    MeldText_Sichern(0, 1, QStringLiteral("Tür offen"));
    MeldText_Sichern(0, 2, QStringLiteral("Übertemperatur"));
    MeldText_Sichern(1, 40, QStringLiteral("Kühlwasser"));
    plant.Spur(0, 0) = QStringLiteral("Regler");
    plant.Spur(0, 3) = QStringLiteral("Argon");
    plant.Spur_Titel(0, 0) = QStringLiteral("Kammerofen 1");
    MeldText_Sichern(0, 97, {});
    MeldEintrag(0, 1);
    MeldEintrag(0, 2);
    MeldEintrag(0, -2);
    setNow(now().addSecs(3725));
    MeldEintrag(1, 40);
    closeMessageStore();
    // Furnace kinds (furnace 1 has 48 messages), then the message that comes
    // or goes per furnace: message 1 of furnace 0 goes, 40 of furnace 1 comes.
    const QByteArray steuer("\x02\x81\x28\0\0\0\0\0\0", 9);
    seed(QStringLiteral("message_store"), QStringLiteral("two-furnaces"),
         steuer + readAll(ordner + QStringLiteral("/Kalmeron.mld")));
}

void siteTextSeeds()
{
    seed(QStringLiteral("site_texts"), QStringLiteral("messages"),
         QByteArray("DE_101;0;T\xFCr offen\r\nEN_101;0;Door open\r\nDE_102;3;\xDC" "bertemperatur Ofen 3\r\n"
                    "FR_110;0;Porte ouverte\nSP_120;8;Porta aperta\rIT_120;8;Puerta abierta\r\n"
                    "NL_132;1;Deur open\r\nDE_008;0;Verbinden\r\n"));
    freshRun();
    buildLanguageTable();
    QByteArray tabelle;
    for (int row = 0; row < 12; ++row)
        tabelle += languageTableRecord(row);
    seed(QStringLiteral("site_texts"), QStringLiteral("table-rows"), tabelle);
}

void controllerNameSeed()
{
    seed(QStringLiteral("controller_names"), QStringLiteral("two-furnaces"),
         QByteArray("SERIE=1203-017-KHP\r\nREG_Name_1=Regler\r\nREG_Einh_1=\xB0" "C\r\n"
                    "REG_Name_2=Charge\r\nREG_Einh_2=\xB0" "C\r\nREG_Name_6=Druck\r\nREG_Einh_6=mbar\r\n\r\n"
                    "SERIE=1410-003-VAC\nREG_Name_3=Vakuum\nREG_Einh_3=mbar\nREG_Name_7=zu viel\n"
                    "SERIE=9999-999-XXX\nREG_Name_1=fremd\n"));
}

void programFileSeed()
{
    freshRun();
    Pfade_Setzen();
    const QString datei = dataFile(QStringLiteral("OV_DEN.PRG"));
    prog.Prog = Program{};
    prog.Prog.Prog_Name = QStringLiteral("Anlassen 620");
    prog.Prog.Segment[0] = {1, 1, 620, 90, 300, 100, 0x3, 0, 0};
    prog.Prog.Segment[1] = {2, 2, 620, 0, 0, 80, 0, 0, 0};
    Prog_Sichern(datei, 1);
    prog.Prog.Prog_Name = QStringLiteral("Ein langer Name mit dreissig!!");
    prog.Prog.Segment[2] = {3, 3, 40, 0, 500, 100, 0x8, 12, 34};
    Prog_Sichern(datei, 100);
    QByteArray labels(LABEL_SATZ, '\0');
    labels.replace(0, 5, "Argon");
    labels[300] = 1;
    // Long names, file "OV_DEN", program 1.
    seed(QStringLiteral("program_file"), QStringLiteral("two-programs"),
         QByteArray("\x01\x01", 2) + mitLaenge(readAll(datei)) + labels);
}

void usbSourceSeeds()
{
    test::UsbSourceBuilder f20(20);
    f20.addRecord(201, 12, 3, 2024, 8, 0, 0);
    f20.addRecord(1, 12, 3, 2024, 8, 0, 10, {1000, 990, 55});
    f20.addRecord(1, 13, 3, 2024, 0, 0, 10, {1001, 991, 56});
    test::UsbSourceBuilder f60(60);
    f60.addRecord(154, 12, 3, 2024, 8, 0, 0);
    test::UsbSourceBuilder f80(80);
    test::Words &a = f80.addRecord(154, 12, 3, 2024, 8, 30, 10, {1000, 990, 0x0342, 7, 0, 0x11, 0x22});
    a[31] = 0x0B0A;
    f80.addRecord(131, 12, 3, 2024, 8, 30, 20, {1001, 991, 0x0042, 7, 0, 0x11, 0x22});
    seed(QStringLiteral("usb_source"), QStringLiteral("form-60-then-20"),
         QByteArray(1, '\2') + mitLaenge(f60.bytes()) + mitLaenge(f20.bytes()));
    seed(QStringLiteral("usb_source"), QStringLiteral("form-80"), QByteArray(1, '\1') + mitLaenge(f80.bytes()));
}

void dateSeeds()
{
    const QByteArray stempel("\x79\x9A\x50\x00", 4); // 15.03.26 10:00:00 as the PLC packs it
    const char *texte[] = {"15.03.2026 10:00:00", "15.03.26 10:00:00", "15/03/2026 10:00", "29-02-24",
                           "31.12.2025 23:59:59", "24.03.2026 24:00:00", "260315 10:00:00"};
    int n = 0;
    for (const char *t : texte)
        seed(QStringLiteral("dates"), QStringLiteral("form-%1").arg(++n),
             stempel + QByteArray("\x03\x00\x10", 3) + QByteArray(t));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: fuzz_make_seeds <corpus folder>\n");
        return 2;
    }
    corpus = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    receiveSeeds(QStringLiteral("memory_link"), Kanal_Art::Panel);
    receiveSeeds(QStringLiteral("modbus"), Kanal_Art::Modbus);
    receiveSeeds(QStringLiteral("panel_server"), Kanal_Art::Server);
    messageStoreSeed();
    siteTextSeeds();
    controllerNameSeed();
    dateSeeds();
    programFileSeed();
    usbSourceSeeds();
    return 0;
}
