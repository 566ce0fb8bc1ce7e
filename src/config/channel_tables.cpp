#include "config/channel_tables.h"

#include "config/text_ids.h"
#include "core/conversions.h"
#include "core/word_map.h"

namespace kal {

namespace {

constexpr int EINHEIT_BREITE = 5; ///< width of Kanal_Einheit


/// Channel name by kind (A bits 0..3) and unit code (A bits 8..11).
/// Kinds 0..3 are the auxiliary circuits of a furnace: 0 and 1 the preheating
/// (kind 0 is what a pair without a kind gives, and preheating is the
/// circuit a furnace most often has), 2 the gassing, 3 the cooling.
QString channelName(int art, int einheit)
{
    switch (art) {
    case 0:
    case 1: return Text_Id(text::PREHEAT);
    case 2: return QStringLiteral("Begasung ");
    case 3: return QStringLiteral("Kühlung  ");
    case 4: return einheit == 9 ? Text_Id(text::PRESSURE) : Text_Id(text::VACUUM);
    case 5: return einheit == 9 ? QStringLiteral("Hochdruck ") : Text_Id(text::AIR_FEED);
    case 6: return einheit == 9 ? QStringLiteral("Niederdruck ") : Text_Id(text::EXHAUST);
    case 7: return Text_Id(text::CIRCULATION);
    case 8: return QStringLiteral("Kat  ");
    case 9: return einheit == 8 ? QStringLiteral("Zone        ") : Text_Id(text::RESISTANCE);
    case 10: return Text_Id(text::SET_VALUE);
    case 11: return QStringLiteral("  ") + Text_Id(text::ACTUAL_VALUE);
    case 12: return Text_Id(text::OUTPUT);
    case 13: return einheit != 0 ? QStringLiteral("  Heizung   ") : QStringLiteral("  ") + Text_Id(text::STATUS);
    case 14: return einheit == 5 ? QStringLiteral("Verdampfer ") : Text_Id(text::CURRENT_A);
    default: return einheit == 6 ? QStringLiteral("Loetbad   ") : Text_Id(text::VOLTAGE);
    }
}

/// Unit text by unit code; sub-code 3 turns volts into litres per minute.
QString unitText(int einheit, int sub)
{
    switch (einheit) {
    case 1: return QStringLiteral(" °C  ");
    case 2: return QStringLiteral(" m/s ");
    case 3: return QStringLiteral(" PA  ");
    case 4: return QStringLiteral(" m³/h");
    case 5: return QStringLiteral(" A   ");
    case 6: return sub == 3 ? QStringLiteral("L/Min") : QStringLiteral(" V   ");
    case 7: return QStringLiteral(" %   ");
    case 8: return QStringLiteral(" Ohm ");
    case 9: return QStringLiteral(" bar ");
    default: return QString(EINHEIT_BREITE, QLatin1Char(' '));
    }
}

/// Completion of a channel name for a pair with A bit 12 set. The sub-code
/// tells what the channel belongs to:
///   1..6  the letter "R", "M", "C", "V", "H" or "L" stands in front of the name
///   7, 8  the mark "Kat" or "Tür" stands in front of the name
///   9     a gas measurement, named by the unit codes above the ordinary
///         units: 10 "TNV", 11 "C3H8" with the unit " ppm ", 12 "O2"; another
///         unit code keeps the name
///   0, 10..15  the name stays
/// A letter or mark is followed by a blank, after any leading blanks of the
/// name. Then the channel's number (1..12) is written into the name, after
/// its last character and a blank; the name keeps at least its former width,
/// so that lists stay in columns. Several zones or heaters of one furnace are
/// told apart this way.
void completeName(int slot, int kanal, int sub, int einheit)
{
    static const char *const vorne[] = {"", "R", "M", "C", "V", "H", "L", "Kat", "Tür"};
    QString name = plant.Kanal_Name(slot, kanal);

    if (sub == 9) {
        if (einheit == 10) {
            name = QStringLiteral("TNV         ");
        } else if (einheit == 11) {
            name = QStringLiteral("C3H8        ");
            plant.Kanal_Einheit(slot, kanal) = QStringLiteral(" ppm ");
        } else if (einheit == 12) {
            name = QStringLiteral("O2          ");
        }
    } else if (sub >= 1 && sub <= 8) {
        int lead = 0;
        while (lead < name.size() && name[lead] == QLatin1Char(' '))
            ++lead;
        name = name.left(lead) + QString::fromUtf8(vorne[sub]) + QLatin1Char(' ') + name.mid(lead);
    }

    const int breite = int(name.size());
    QString kurz = name;
    while (kurz.endsWith(QLatin1Char(' ')))
        kurz.chop(1);
    kurz += QLatin1Char(' ') + QString::number(kanal + 1);
    plant.Kanal_Name(slot, kanal) = kurz.leftJustified(breite, QLatin1Char(' '));
}

bool isUdp(int slot)
{
    return slot >= 1 && plant.Ofen_UDP[slot - 1] == TRUE16;
}

/// The fixed channel table of a plain furnace.
void plainChannelTable(int n)
{
    struct Line {
        int id;           // Sprachtext id of the name, -1 none
        const char *einheit;
        i16 teiler;
        int adr_ist;      // -1: left as the code words gave it
    };
    static const Line tabelle[10] = {
        {text::SET_VALUE, " °C", 1, word::SET_VALUE},  {text::ACTUAL_VALUE, " °C", 1, word::ACTUAL_VALUE},
        {text::OUTPUT, " %", 1, word::OUTPUT},         {text::STATUS, "", 1, word::STATUS},
        {text::CURRENT_A, " A", 10, 64},               {text::VOLTAGE, " V", 10, 0},
        {text::RESISTANCE, " Ohm", 1000, 0},           {-1, "", 1000, -1},
        {-1, "", 1, -1},     {-1, "", 1, -1},
    };
    for (int k = 0; k < 10; ++k) {
        const Line &z = tabelle[k];
        plant.Kanal_Name(n, k) = z.id < 0 ? QString() : Text_Id(z.id);
        plant.Kanal_Einheit(n, k) = fixedWidth(QString::fromUtf8(z.einheit), EINHEIT_BREITE);
        plant.Kanal_Teiler(n, k) = z.teiler;
        if (z.adr_ist >= 0)
            plant.Kanal_Adr_Ist(n, k) = static_cast<i16>(z.adr_ist);
    }
    plant.Kanal_Status(n, 3) = TRUE16;

    // The one controller of a plain furnace shows as set point, actual value,
    // output and state; each of these four channels has its parameter words.
    static const i16 parameter[4] = {47, 48, 49, 52};
    for (int k = 0; k < KANAELE; ++k)
        for (int j = 0; j < 4; ++j)
            plant.Reg_Adr(n, k * 4 + j) = k < 4 ? parameter[j] : 0;
}

} // namespace

void Kanal_Fix(int n)
{
    const i16 typ = plant.Ofen_Typ[n];
    if (n >= 1)
        setFurnaceLayout(n - 1, typ);
    if (typ < 0)
        plant.Kanal_Zahl[n] = 0;

    bool zaehlen = true;
    bool erste_Sollkurve = true;
    for (int k = 0; k < KANAELE; ++k) {
        const uint16_t a = static_cast<uint16_t>(plant.Ofen_Kennung_A(n, k));
        const uint16_t b = static_cast<uint16_t>(plant.Ofen_Kennung_B(n, k));

        const i16 soll = static_cast<i16>(b & 0x3FF);
        if (zaehlen && soll >= 1)
            plant.Kanal_Zahl[n] = static_cast<i16>(plant.Kanal_Zahl[n] + 1);
        else
            zaehlen = false;

        const int schritt = (b & 0x1000) ? 10 : 1;
        const i16 ist = static_cast<i16>(soll + schritt);
        plant.Kanal_Adr_Soll(n, k) = soll;
        plant.Kanal_Adr_Ist(n, k) = ist;
        plant.Kanal_Adr_Out(n, k) = static_cast<i16>(ist + schritt);
        for (int j = 0; j < 4; ++j)
            plant.Reg_Adr(n, k * 4 + j) = static_cast<i16>(ist + 2 * schritt + j * schritt);

        const int art = a & 15;
        const int sub = (a & 0xF0) / 16;
        const int einheit = (a & 0xF00) / 256;
        plant.Kanal_Name(n, k) = channelName(art, einheit);
        if (art == 13 && einheit == 0)
            plant.Kanal_Status(n, k) = TRUE16;
        plant.Kanal_Einheit(n, k) = unitText(einheit, sub);
        if (a & 0x1000)
            completeName(n, k, sub, einheit);

        if (a & 0x2000)
            plant.Kanal_Teiler(n, k) = (b & 0x2000) ? 100 : 10;
        else
            plant.Kanal_Teiler(n, k) = 1;

        if (a & 0x4000) {
            plant.Kanal_Regler(n, k) = TRUE16;
        } else {
            plant.Kanal_Regler(n, k) = FALSE16;
            plant.Kanal_Adr_Out(n, k) = 0;
        }

        if (a & 0x8000) {
            plant.Kanal_Soll_Kurve(n, k) = TRUE16;
            // On the memory link the parameters of the first controlled
            // loop with a set value curve sit in a block of their own.
            if (erste_Sollkurve && isUdp(n))
                for (int j = 0; j < 4; ++j)
                    plant.Reg_Adr(n, k * 4 + j) = static_cast<i16>(630 + 10 * j);
            erste_Sollkurve = false;
        } else {
            plant.Kanal_Soll_Kurve(n, k) = FALSE16;
            plant.Kanal_Adr_Soll(n, k) = 0;
        }
    }

    if (plant.Kanal_Zahl[n] < 4)
        plant.Kanal_Zahl[n] = 4;
    if (plant.Kanal_Zahl[n] >= 12)
        plant.Kanal_Zahl[n] = 11;
}

void Spuren_Setzen(int n)
{
    const int f = n - 1; // furnace index; -1 for the batch on view
    if (f >= 0) {
        plant.Ofen_Opt_A[f] = 0;
        plant.Ofen_Opt_B[f] = 0;
    }
    for (int k = 0; k < KANAELE; ++k) {
        plant.Kanal_Status(n, k) = 0;
        plant.Kanal_Soll_Kurve(n, k) = 0;
        plant.Kanal_Regler(n, k) = 0;
    }

    if (plant.Ofen_Typ[n] >= 0) {
        plant.Ofen_Typ[n] = 0;
        Kanal_Fix(n);
        // The batch on view has no serial of its own here; the curve loader
        // sets its channel count from the batch file's serial.
        const bool qrv = f >= 0 && plant.Ofen_Serie[f] == QLatin1String("0708-001-QRV");
        plant.Kanal_Zahl[n] = qrv ? 7 : 4;
        plant.Datei_Art[n] = QStringLiteral("DEN%1").arg(n, 2, 10, QLatin1Char('0'));
        if (f >= 0) {
            plant.Adr_Trigger[f] = 90;
            plant.Trigger_Len[f] = 10;
        }
        plainChannelTable(n);
        return;
    }

    plant.Datei_Art[n] = QStringLiteral("ADD %1").arg(n);
    if (f >= 0) {
        const bool udp = plant.Ofen_UDP[f] == TRUE16;
        plant.Adr_Trigger[f] = udp ? 220 : 400;
        plant.Trigger_Len[f] = udp ? 16 : 40;
        // The version is two characters wide; CVI of it can therefore never
        // meet a wrong length.
        const int version = CVI(Latin1Bytes(fixedWidth(plant.Ofen_Version[f], 2)));
        plant.Ofen_Opt_A[f] = flag(version & 0x400);
        plant.Ofen_Opt_B[f] = flag(version & 0x800);
        plant.Reg_Anzahl[f] = 0;
    }

    Kanal_Fix(n);

    if (f >= 0) {
        for (int k = 0; k <= 10; ++k) {
            if (plant.Kanal_Regler(n, k) == 0)
                continue;
            const int nr = plant.Reg_Anzahl[f] + 1;
            plant.Reg_Anzahl[f] = static_cast<i16>(nr);
            plant.Reg_Name(f, nr - 1) = plant.Kanal_Name(n, k);
            plant.Reg_Einheit(f, nr - 1) = plant.Kanal_Einheit(n, k);
            plant.Reg_Kanal(f, nr) = static_cast<i16>(k);
        }
    }
    for (int k = 0; k < KANAELE; ++k)
        if (plant.Kanal_Teiler(n, k) < 1)
            plant.Kanal_Teiler(n, k) = 1;
}

} // namespace kal
