#include "operation/messages_view_model.h"

#include "core/conversions.h"
#include "core/screen.h"
#include "core/word_map.h"
#include "link/frames.h"
#include "operation/live_page.h"
#include "operation/message_store.h"
#include "operation/ui_text.h"

#include <QDateTime>
#include <QLocale>

namespace kal {


namespace {

constexpr int BEFEHL_QUITT = 4;  // command that acknowledges the furnace's messages

/// Where message index i (0..47) lies: word offset w and bit mask m of 16 bits.
struct Meld_Bit {
    int w;
    uint16_t m;
};

Meld_Bit meldBit(int i)
{
    return {i / 16, uint16_t(1u << (i % 16))};
}

bool bitGesetzt(int ofen, int wort, uint16_t maske)
{
    return (uint16_t(plant.SPS_Wort(ofen, wort)) & maske) != 0;
}

QString meldText(int ofen, int i)
{
    const QString t = decltype(plant.Meld_Text)::valid(ofen, i) ? plant.Meld_Text(ofen, i) : QString();
    return Fest(t, MELD_TEXT_BREITE);
}

/// Furnace number, ": ", the 16-character name, two blanks, the 12-character serial.
QString ofenKopf(int ofen)
{
    return QString::number(ofen + 1) + QStringLiteral(": ") + Fest(plant.Ofen_Name[ofen], 16) +
           QStringLiteral("  ") + Fest(plant.Ofen_Serie[ofen], 12);
}

/// The come time of a record in the system's short date and time form.
QString kommtText(const Meld_Zeit &z)
{
    const QDateTime d(QDate(2000 + z.Jahr, z.Monat, z.Tag), QTime(z.Stunde, z.Minute, z.Sekunde));
    return QLocale::system().toString(d, QLocale::ShortFormat);
}

void normaleZeilen(int ofen, QList<Meld_Zeile> &zeilen)
{
    if (plant.Ofen_Online[ofen] == 0 || plant.Meld_Anzeige[ofen] < 1)
        return;
    // Up to Meld_Anzahl inclusive: the record behind the last message is read
    // as well; it is never active, so it adds nothing.
    for (int i = 0; i <= plant.Meld_Anzahl[ofen]; ++i) {
        const Meld_Satz s = Meld_Lesen(Meld_Satz_Nr(ofen, i + 1));
        if (s.Aktiv == 0)
            continue;
        zeilen.append({kommtText(s.Kommt) + QStringLiteral("    ") + ofenKopf(ofen) + QStringLiteral("  ") +
                           Zwei_Stellen(i + 1) + QStringLiteral("  ") + meldText(ofen, i),
                       0});
    }
}

void konfigZeilen(int ofen, QList<Meld_Zeile> &zeilen)
{
    if (plant.Meld_Anzeige[ofen] < 1)
        return;
    for (int i = 0; i < plant.Meld_Anzahl[ofen]; ++i) {
        const Meld_Bit b = meldBit(i);
        const QString zelle[4] = {
            bitGesetzt(ofen, word::MESSAGES + b.w, b.m) ? QStringLiteral("AKTIV") : QString(5, QLatin1Char(' ')),
            bitGesetzt(ofen, word::MESSAGE_STOP + b.w, b.m) ? QStringLiteral("Stop") : QString(4, QLatin1Char(' ')),
            bitGesetzt(ofen, word::MESSAGE_N2 + b.w, b.m) ? QStringLiteral(" N2 ") : QString(4, QLatin1Char(' ')),
            bitGesetzt(ofen, word::MESSAGE_SMS + b.w, b.m) ? QStringLiteral("SMS ") : QString(4, QLatin1Char(' ')),
        };
        QString t = QStringLiteral("    ") + ofenKopf(ofen) + QStringLiteral("  MW") + Zwei_Stellen(word::MESSAGES + b.w) +
                    QStringLiteral(":X") + Zwei_Stellen(i % 16) + QStringLiteral("  ") + Zwei_Stellen(i + 1) +
                    QStringLiteral("  ") + meldText(ofen, i);
        for (const QString &z : zelle)
            t += QStringLiteral("  ") + z;
        zeilen.append({t, ofen * 128 + i});
    }
}

/// Switches the SMS bit of the selected message in the PLC. The image follows
/// at once only when switching on; when switching off the new value lands in
/// word 96 + w and word 696 + w keeps the old one until the next poll brings it.
void smsUmschalten()
{
    const int ofen = plant.Meld_Auswahl / 128;
    const Meld_Bit b = meldBit(plant.Meld_Auswahl % 128);
    const int wort = word::MESSAGE_SMS + b.w;
    const uint16_t alt = uint16_t(plant.SPS_Wort(ofen, wort));
    const bool ein = (alt & b.m) == 0;
    const i16 neu = i16(ein ? (alt | b.m) : (alt & ~b.m));
    SEND_BEF(u8(ofen + 1), i16(wort), neu);
    if (ein)
        plant.SPS_Wort(ofen, wort) = neu;
    else
        plant.SPS_Wort(ofen, word::MESSAGE_SMS_COPY + b.w) = neu;
}

} // namespace

void Alarme_Oeffnen(bool konfig)
{
    plant.Meld_Konfig = flag(konfig);
    plant.Meld_Auswahl = -1;
    plant.Alarme_Gezeigt = TRUE16;
}

void Alarme_Schliessen()
{
    plant.Alarme_Gezeigt = FALSE16;
    plant.Meld_Auswahl = -1;
    Seite_Sofort();
}

void Alarme_Meldung_Neu()
{
    if (plant.Alarme_Gezeigt != 0)
        screen().Alarme_Zeichnen(plant.Meld_Konfig == 0);
}

void Alarme_Config_Neu(int /*ofen*/, bool geaendert)
{
    if (plant.Alarme_Gezeigt != 0)
        screen().Alarme_Zeichnen(geaendert);
}


std::array<Meld_Lampen, OFEN_MAX> CODE_Akt()
{
    std::array<Meld_Lampen, OFEN_MAX> lampen;
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        Meld_Lampen &l = lampen[ofen];
        l.sichtbar = plant.Meld_Config_Da[ofen] != 0;
        if (!l.sichtbar)
            continue;
        const uint16_t code = uint16_t(plant.Meld_Config(ofen, word::MESSAGE_CODE - word::MESSAGE_STOP));
        for (int k = 0; k < 4; ++k)
            l.farbe[k] = (code & (1u << k)) ? Farbe_Stoerung : Farbe_Normal;
    }
    return lampen;
}

QList<Meld_Zeile> Meld_Akt()
{
    QList<Meld_Zeile> zeilen;
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        if (plant.Meld_Konfig != 0)
            konfigZeilen(ofen, zeilen);
        else
            normaleZeilen(ofen, zeilen);
    }
    return zeilen;
}

QString Alarme_Titel()
{
    return plant.Meld_Konfig != 0 ? QStringLiteral("Config") + Text_Id(text::MESSAGES) : Text_Id(text::MESSAGES);
}

QString Check_Text(int ofen)
{
    return QString::number(ofen + 1).right(1) + QStringLiteral(":") + Fest(plant.Ofen_Name[ofen], 16);
}

bool Check_Sichtbar(int ofen)
{
    // "Configured" here means enabled in the plant's configuration.
    return plant.Meld_Konfig != 0 || plant.Ofen_Aktiv[ofen] != 0;
}

void Meld_Anzeige_Setzen(int ofen, int wert)
{
    plant.Meld_Anzeige[ofen] = i16(wert);
}

void Meld_Zeile_Klick(int daten)
{
    if (plant.Meld_Konfig != 0)
        plant.Meld_Auswahl = daten;
}

std::array<QString, 8> Tasten_Texte()
{
    std::array<QString, 8> t;
    if (plant.Meld_Konfig != 0) {
        if (plant.Meld_Auswahl >= 0 && plant.Meld_Auswahl / 128 < OFEN_MAX) {
            const Meld_Bit b = meldBit(plant.Meld_Auswahl % 128);
            t[2] = bitGesetzt(plant.Meld_Auswahl / 128, word::MESSAGE_SMS + b.w, b.m) ? QStringLiteral("SMS OFF ")
                                                                       : QStringLiteral("SMS ON ");
        }
    } else if (plant.Seite_Ofen >= 1 && plant.Seite_Ofen <= OFEN_MAX) {
        // The furnace's type text is its 16-character name, the type the PLC
        // reports for itself.
        t[6] = QStringLiteral("Quitt ") + Fest(plant.Ofen_Name[plant.Seite_Ofen - 1], 16);
    }
    t[7] = Text_Id(text::BACK);
    return t;
}

Tasten_Folge Taste_Klick(int index, int flag)
{
    if (flag != 0 || index < 0 || index > 7)
        return Tasten_Folge::Nichts;
    if (Tasten_Texte()[index].isEmpty())
        return Tasten_Folge::Nichts;
    switch (index) {
    case 2:
        smsUmschalten();
        return Tasten_Folge::Neu_Zeichnen;
    case 6:
        // The station only asks; the list changes when the PLC clears the bits.
        SEND_BEF(u8(plant.Seite_Ofen), word::COMMAND, BEFEHL_QUITT);
        return Tasten_Folge::Nichts;
    case 7:
        return Tasten_Folge::Schliessen;
    default:
        return Tasten_Folge::Nichts;
    }
}

} // namespace kal
