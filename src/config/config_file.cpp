#include "config/config_file.h"

#include "config/channel_tables.h"
#include "config/config_record.h"
#include "config/paths.h"
#include "config/paths_check.h"
#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/dates.h"
#include "core/dialogs.h"
#include "core/plant_state.h"
#include "core/word_map.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <initializer_list>

namespace kal {

namespace {

constexpr int FARBEN = 18;       ///< colours per furnace in the file
constexpr int FARBE_MAX = 23;    ///< highest index of the colour table
constexpr int ALTE_DATEI = 41;   ///< a file of fewer records has no groups 41..61

/// Colour k stored in byte j of the first records of a group; -1: no colour.
struct ColourBytes {
    int k[4];
};
constexpr ColourBytes FARBEN_11{{0, 1, 2, 3}};
constexpr ColourBytes FARBEN_21{{-1, 10, 4, 5}};
constexpr ColourBytes FARBEN_31{{6, 7, 8, 9}};
constexpr ColourBytes FARBEN_41{{11, 12, 13, 14}};
constexpr ColourBytes FARBEN_51{{15, 16, 17, -1}};

void putColours(ConfigRecord &s, int f, const ColourBytes &fb)
{
    for (int j = 0; j < 4; ++j)
        if (fb.k[j] >= 0)
            s.B[j] = static_cast<u8>(plant.Kanal_Farbe(f + 1, fb.k[j]));
}

void takeColours(const ConfigRecord &s, int f, const ColourBytes &fb)
{
    for (int j = 0; j < 4; ++j) {
        if (fb.k[j] < 0)
            continue;
        plant.Kanal_Farbe(f + 1, fb.k[j]) = s.B[j];
        if (s.B[j] > FARBE_MAX)
            plant.Farbe_Fehler = TRUE16;
    }
}

/// Identity pairs 4*q .. 4*q+3 of table A or B into / out of W1..W4.
void putPairs(ConfigRecord &s, int f, bool b, int q)
{
    for (int j = 0; j < 4; ++j)
        s.W[1 + j] = b ? plant.Ofen_Kennung_B(f + 1, 4 * q + j) : plant.Ofen_Kennung_A(f + 1, 4 * q + j);
}

void takePairs(const ConfigRecord &s, int f, bool b, int q)
{
    for (int j = 0; j < 4; ++j)
        (b ? plant.Ofen_Kennung_B(f + 1, 4 * q + j) : plant.Ofen_Kennung_A(f + 1, 4 * q + j)) = s.W[1 + j];
}

// ---- fields of the open batch (also written alone by Charge_Zustand_Sichern)

void putBatchStart(ConfigRecord &s, int f)
{
    s.W[0] = plant.Charge_Pos[f];
    s.putText(1, CONFIG_TEXT_LAENGE, Datum_Voll(plant.Charge_Start[f]).left(19));
}

void putBatchNumber(ConfigRecord &s, int f)
{
    s.W[0] = static_cast<i16>(plant.Charge_Nr[f] & 0x7FFF);
    s.putBytes(17, MKL(plant.Charge_Nr[f]));
}

// ---- flag byte of record 21+i

u8 flagByte(int f)
{
    u8 b = 0;
    if (plant.Ofen_Aktiv[f]) b |= 0x01;
    if (plant.Ofen_Charge[f]) b |= 0x02;
    if (plant.Ofen_TempLog[f]) b |= 0x04;
    if (f == 0 && plant.Backup_Aktiv) b |= 0x08;
    if (plant.Ofen_Seriell[f]) b |= 0x10;
    if (f == 0 && plant.Kurve_Option) b |= 0x40;
    if (plant.Ofen_UDP[f]) b |= 0x80;
    return b;
}

void takeFlagByte(int f, u8 b)
{
    plant.Ofen_Aktiv[f] = flag(b & 0x01);
    plant.Ofen_Charge[f] = flag(b & 0x02);
    plant.Ofen_TempLog[f] = flag(b & 0x04);
    if (f == 0) {
        plant.Backup_Aktiv = flag(b & 0x08);
        plant.Kurve_Option = flag(b & 0x40);
    }
    // Bit 4 (serial link) is never taken back: this station has no serial link.
    plant.Ofen_UDP[f] = flag(b & 0x80);
}

// ---- writing

/// The seven records of furnace f, in record order, through the one shared
/// record buffer: a field that a record doesn't use keeps what the record
/// before left in it.
void writeFurnace(ConfigRecordFile &d, ConfigRecord &s, int f)
{
    for (int j = 0; j < 4; ++j)
        s.B[j] = plant.Ofen_IP(f, j);
    s.W[0] = plant.Ofen_Typ[f + 1];
    putPairs(s, f, false, 0);
    d.write(1 + f, s);

    putColours(s, f, FARBEN_11);
    putPairs(s, f, false, 1);
    putBatchStart(s, f);
    d.write(11 + f, s);

    s.B[0] = flagByte(f);
    putColours(s, f, FARBEN_21);
    putPairs(s, f, false, 2);
    s.putText(1, 16, plant.Ofen_Name[f]);
    putBatchNumber(s, f);
    d.write(21 + f, s);

    putColours(s, f, FARBEN_31);
    s.W[0] = plant.TempLog_Takt[f];
    s.W[1] = plant.Ofen_Wert216[f];
    s.W[2] = plant.Ofen_Wert217[f];
    s.W[3] = plant.Ofen_Wert218[f];
    s.putText(1, 12, plant.Ofen_Serie[f]);
    s.putText(13, 2, plant.Ofen_Version[f]);
    s.putBytes(15, MKI(plant.TempLog_Schwelle[f]));
    d.write(31 + f, s);

    putColours(s, f, FARBEN_41);
    s.W[0] = plant.Element_Anz[f];
    putPairs(s, f, true, 0);
    for (int set = 0; set < 3; ++set) {
        int bits = 0;
        for (int k = 0; k < 12; ++k)
            if (plant.CSV_Spalten(set, k))
                bits |= 1 << k;
        s.putBytes(11 + 2 * set, MKI(static_cast<i16>(bits)));
    }
    s.putBytes(17, MKL(plant.TempLog_Charge[f]));
    d.write(41 + f, s);

    putColours(s, f, FARBEN_51);
    s.B[3] = 0;
    s.W[0] = plant.Element_Spuren[f];
    putPairs(s, f, true, 1);
    s.putText(1, 16, plant.Ofen_Bezeichnung[f]);
    s.putText(20, 1, QString::number(f + 1));
    d.write(51 + f, s);

    s.B[0] = s.B[1] = s.B[2] = 0;
    s.B[3] = static_cast<u8>(plant.Ofen_Nr_Prog[f]);
    s.W[0] = plant.Element_Rest[f];
    putPairs(s, f, true, 2);
    d.write(61 + f, s);
}

/// A path spread over 20-character records.
void writePath(ConfigRecordFile &d, ConfigRecord &s, const QString &pfad, std::initializer_list<int> saetze)
{
    int pos = 0;
    for (int nr : saetze) {
        s.putText(1, CONFIG_TEXT_LAENGE, pfad.mid(pos, CONFIG_TEXT_LAENGE));
        d.write(nr, s);
        pos += CONFIG_TEXT_LAENGE;
    }
}

void writePlant(ConfigRecordFile &d, ConfigRecord &s)
{
    s.B[0] = plant.Sprache;
    s.W[1] = plant.Druck_Prozent;
    s.W[2] = plant.Druck_Rand_X;
    s.W[3] = plant.Druck_Rand_Y;
    writePath(d, s, plant.Pfad_Karte[1], {9, 10});
    writePath(d, s, plant.Pfad[1], {19, 20});
    writePath(d, s, plant.Pfad[2], {29, 30});
    writePath(d, s, plant.Pfad[3], {39, 40});
    writePath(d, s, plant.Pfad[4], {49, 50, 59, 60, 70});
}

/// Takes over the identity that the PLC reports, for each online furnace whose
/// identity check failed more than once in a row.
void adoptIdentity()
{
    for (int f = 0; f < OFEN_MAX; ++f) {
        if (plant.Ofen_Online[f] == 0 || plant.Kennung_Zaehler[f] <= 1)
            continue;
        plant.Kennung_Zaehler[f] = 0;
        plant.Ofen_Typ[f + 1] = plant.SPS_Wort(f, word::TYPE);
        if (plant.PLC_Name[f] != plant.Ofen_Name[f]) {
            plant.Ofen_Name[f] = plant.PLC_Name[f];
            plant.Ofen_Bezeichnung[f] = plant.PLC_Name[f];
        }
        plant.Ofen_Serie[f] = plant.PLC_Serie[f];
        plant.Ofen_Version[f] = plant.PLC_Version[f];
        Ist_GKD(f);
        plant.Ofen_Wert216[f] = plant.SPS_Wort(f, word::IDENTITY_216);
        plant.Ofen_Wert217[f] = plant.SPS_Wort(f, word::IDENTITY_216 + 1);
        plant.Ofen_Wert218[f] = plant.SPS_Wort(f, word::IDENTITY_216 + 2);
    }
}

// ---- reading

/// Records 1+i .. 31+i of furnace f with the values derived from them.
void readFurnace(ConfigRecordFile &d, int f)
{
    ConfigRecord s = d.read(1 + f);
    for (int j = 0; j < 4; ++j)
        plant.Ofen_IP(f, j) = s.B[j];
    const i16 typ = s.W[0];
    plant.Ofen_Typ[f + 1] = typ;
    takePairs(s, f, false, 0);
    setFurnaceLayout(f, typ);
    // A furnace whose identity block is not at word 50 sits behind a panel
    // server, which does not keep the batch number: the file keeps it.
    plant.Ofen_Server[f] = flag(plant.Ofen_Basis[f] != 50);

    s = d.read(11 + f);
    takeColours(s, f, FARBEN_11);
    plant.Charge_Pos[f] = s.W[0];
    takePairs(s, f, false, 1);
    plant.Charge_Start[f] = s.text(1, CONFIG_TEXT_LAENGE);
    Datum_Parse(plant.Charge_Start[f]);
    plant.Charge_Gueltig[f] = flag(plant.Datum_OK == TRUE16);

    s = d.read(21 + f);
    takeFlagByte(f, s.B[0]);
    takeColours(s, f, FARBEN_21);
    takePairs(s, f, false, 2);
    plant.Ofen_Name[f] = s.text(1, 16);
    // The packed number is cut from a record of fixed width, so CVL always
    // gets its four bytes; a short file reads as zeros, never as a short field.
    if (plant.Ofen_Server[f] == 0)
        plant.Charge_Nr[f] = -1;
    else if (typ < 0)
        plant.Charge_Nr[f] = CVL(s.rawText(17, 4));
    else
        plant.Charge_Nr[f] = s.W[0];
    plant.Charge_Nr_Neu[f] = plant.Charge_Nr[f];

    s = d.read(31 + f);
    takeColours(s, f, FARBEN_31);
    i16 takt = s.W[0];
    if (takt < 5)
        takt = 60;
    if (takt > 3600)
        takt = 3600;
    plant.TempLog_Takt[f] = takt;
    plant.Ofen_Wert216[f] = s.W[1];
    plant.Ofen_Wert217[f] = s.W[2];
    plant.Ofen_Wert218[f] = s.W[3];
    plant.Ofen_Serie[f] = s.text(1, 12);
    plant.Ofen_Version[f] = s.text(13, 2);
    plant.TempLog_Schwelle[f] = std::clamp<i16>(CVI(s.rawText(15, 2)), 0, 300);
}

/// Records 41+i .. 61+i of furnace f (files of this version only).
void readFurnaceNew(ConfigRecordFile &d, int f)
{
    ConfigRecord s = d.read(41 + f);
    takeColours(s, f, FARBEN_41);
    plant.Element_Anz[f] = s.W[0];
    takePairs(s, f, true, 0);
    // Every furnace's record carries the CSV column sets; the last one read,
    // furnace 8's, decides.
    for (int set = 0; set < 3; ++set) {
        const int bits = static_cast<uint16_t>(CVI(s.rawText(11 + 2 * set, 2)));
        for (int k = 0; k < 12; ++k)
            plant.CSV_Spalten(set, k) = flag(bits & (1 << k));
    }
    plant.TempLog_Charge[f] = CVL(s.rawText(17, 4));

    s = d.read(51 + f);
    takeColours(s, f, FARBEN_51);
    plant.Element_Spuren[f] = std::min<i16>(s.W[0], 18);
    takePairs(s, f, true, 1);
    // The furnace's digit in the last character proves that this version
    // wrote the second name; an older file held something else there.
    const QByteArray ziffer = QByteArray::number(f + 1);
    plant.Ofen_Bezeichnung[f] = s.rawText(20, 1) == ziffer ? s.text(1, 16) : plant.Ofen_Name[f];

    s = d.read(61 + f);
    const int nr = s.B[3];
    plant.Ofen_Nr_Prog[f] = static_cast<i16>(nr == 0 || nr >= 9 ? f + 1 : nr);
    plant.Element_Rest[f] = s.W[0];
    takePairs(s, f, true, 2);
}

/// A path spread over records, each part cleaned on its own.
QString readPath(ConfigRecordFile &d, std::initializer_list<int> saetze)
{
    QString p;
    for (int nr : saetze)
        p += d.read(nr).text(1, CONFIG_TEXT_LAENGE);
    return p;
}

void readPlant(ConfigRecordFile &d, int n)
{
    const ConfigRecord s = d.read(9);
    plant.Sprache = s.B[0] > 5 ? 0 : s.B[0];
    plant.Druck_Prozent = (s.W[1] < 25 || s.W[1] > 100) ? i16(87) : s.W[1];
    plant.Druck_Rand_X = (s.W[2] < 10 || s.W[2] > 200) ? i16(60) : s.W[2];
    plant.Druck_Rand_Y = (s.W[3] < 10 || s.W[3] > 200) ? i16(55) : s.W[3];
    plant.Pfad_Karte[1] = readPath(d, {9, 10});
    plant.Pfad[1] = readPath(d, {19, 20});
    plant.Pfad[2] = readPath(d, {29, 30});
    plant.Pfad[3] = readPath(d, {39, 40});
    if (n > 40) {
        plant.Pfad[4] = readPath(d, {49, 50, 59, 60});
        if (n > 68)
            plant.Pfad[4] += readPath(d, {70});
    }
}

/// First start: no configuration yet.
void firstStart(const QString &path)
{
    plant.Neu_Datei = TRUE16;
    for (int f = 0; f < OFEN_MAX; ++f) {
        plant.Ofen_Name[f].clear();
        plant.Datei_Art[f + 1] = QStringLiteral("DEN%1").arg(f + 1, 2, 10, QLatin1Char('0'));
    }
    for (int k = 1; k <= 3; ++k)
        plant.Pfad[k] = defaultFolder(k);
    const QString text = Text_Id(text::FILE_NOT_FOUND);
    dialogs().message(text + QStringLiteral(":\n\n") + path + QStringLiteral("\n\n") + text +
                      QLatin1Char('!'));
}

void checkColours()
{
    for (int k = 0; k < 16; ++k)
        plant.Kanal_Farbe(0, k) = k + 8;
    if (plant.Farbe_Fehler == 0)
        return;
    // A colour outside the table: every furnace goes back to the standard
    // colours, and the file is mended at once.
    for (int s = 1; s <= OFEN_MAX; ++s)
        for (int k = 0; k < FARBEN; ++k)
            plant.Kanal_Farbe(s, k) = k + 8;
    Config_Schreiben(false);
}

} // namespace

void Config_Lesen()
{
    const QString path = dataFile(CONFIG_DATEI);
    try {
        QDir().mkpath(plant.Pfad[0]);
        QDir().mkpath(plant.Prog_Ordner);
        QDir::setCurrent(plant.Pfad[0]);

        if (!QFileInfo::exists(path)) {
            firstStart(path);
            return;
        }

        plant.Farbe_Fehler = 0;
        {
            ConfigRecordFile d(path, false);
            const int n = d.records();
            for (int f = 0; f < OFEN_MAX; ++f) {
                readFurnace(d, f);
                if (n < ALTE_DATEI) {
                    // A file of the old kind knows nothing of the identity.
                    for (int p = 0; p < KENNUNG_PAARE; ++p) {
                        plant.Ofen_Kennung_A(f + 1, p) = 0;
                        plant.Ofen_Kennung_B(f + 1, p) = 0;
                    }
                } else {
                    readFurnaceNew(d, f);
                }
            }
            readPlant(d, n);
        }

        Ordner_Pruefen();
        Backup_Pruefen();
        plant.Neu_Laden = 0;
        checkColours();
    } catch (const std::exception &) {
        dialogs().message(QStringLiteral("ERROR:\n") + path + QStringLiteral("\nnot found!"));
    }
}

void Config_Schreiben(bool take_plc)
{
    if (take_plc)
        adoptIdentity();
    QDir().mkpath(plant.Pfad[0]);

    ConfigRecordFile d(dataFile(CONFIG_DATEI), true);
    ConfigRecord s; // one buffer for all records, never cleared in between
    for (int f = 0; f < OFEN_MAX; ++f)
        writeFurnace(d, s, f);
    writePlant(d, s);
}

bool saveConfig()
{
    try {
        Config_Schreiben(false);
        return true;
    } catch (const RunError &) {
        dialogs().message(QStringLiteral("ERROR:\n") + dataFile(CONFIG_DATEI) + QStringLiteral("\nnot written!"));
        return false;
    }
}

void Charge_Zustand_Sichern(int ofen)
{
    if (ofen < 0 || ofen >= OFEN_MAX)
        raiseBounds("Charge_Zustand_Sichern", ofen);
    ConfigRecordFile d(dataFile(CONFIG_DATEI), true);

    ConfigRecord s = d.read(11 + ofen);
    putBatchStart(s, ofen);
    d.write(11 + ofen, s);

    s = d.read(21 + ofen);
    putBatchNumber(s, ofen);
    d.write(21 + ofen, s);
}

} // namespace kal
