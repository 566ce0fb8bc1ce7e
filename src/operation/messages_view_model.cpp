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
struct MessageBit {
    int w;
    uint16_t m;
};

MessageBit messageBit(int i)
{
    return {i / 16, uint16_t(1u << (i % 16))};
}

bool messageBitSet(int ofen, int wort, uint16_t maske)
{
    return (uint16_t(plant.SPS_Wort(ofen, wort)) & maske) != 0;
}

QString messageText(int ofen, int i)
{
    const QString t = decltype(plant.Meld_Text)::valid(ofen, i) ? plant.Meld_Text(ofen, i) : QString();
    return fixedWidth(t, MELD_TEXT_BREITE);
}

/// Furnace number, ": ", the 16-character name, two blanks, the 12-character serial.
QString furnaceHead(int ofen)
{
    return QString::number(ofen + 1) + QStringLiteral(": ") + fixedWidth(plant.Ofen_Name[ofen], 16) +
           QStringLiteral("  ") + fixedWidth(plant.Ofen_Serie[ofen], 12);
}

/// The come time of a record in the system's short date and time form.
QString comeText(const MessageTime &z)
{
    const QDateTime d(QDate(2000 + z.Jahr, z.Monat, z.Tag), QTime(z.Stunde, z.Minute, z.Sekunde));
    return QLocale::system().toString(d, QLocale::ShortFormat);
}

void normalLines(int ofen, QList<MessageLine> &zeilen)
{
    if (plant.Ofen_Online[ofen] == 0 || plant.Meld_Anzeige[ofen] < 1)
        return;
    // Up to Meld_Anzahl inclusive: the record behind the last message is read
    // as well; it is never active, so it adds nothing.
    for (int i = 0; i <= plant.Meld_Anzahl[ofen]; ++i) {
        const MessageRecord s = readMessage(messageRecordNumber(ofen, i + 1));
        if (s.Aktiv == 0)
            continue;
        zeilen.append({comeText(s.Kommt) + QStringLiteral("    ") + furnaceHead(ofen) + QStringLiteral("  ") +
                           twoDigits(i + 1) + QStringLiteral("  ") + messageText(ofen, i),
                       0});
    }
}

void configLines(int ofen, QList<MessageLine> &zeilen)
{
    if (plant.Meld_Anzeige[ofen] < 1)
        return;
    for (int i = 0; i < plant.Meld_Anzahl[ofen]; ++i) {
        const MessageBit b = messageBit(i);
        const QString zelle[4] = {
            messageBitSet(ofen, word::MESSAGES + b.w, b.m) ? QStringLiteral("AKTIV") : QString(5, QLatin1Char(' ')),
            messageBitSet(ofen, word::MESSAGE_STOP + b.w, b.m) ? QStringLiteral("Stop") : QString(4, QLatin1Char(' ')),
            messageBitSet(ofen, word::MESSAGE_N2 + b.w, b.m) ? QStringLiteral(" N2 ") : QString(4, QLatin1Char(' ')),
            messageBitSet(ofen, word::MESSAGE_SMS + b.w, b.m) ? QStringLiteral("SMS ") : QString(4, QLatin1Char(' ')),
        };
        QString t = QStringLiteral("    ") + furnaceHead(ofen) + QStringLiteral("  MW") + twoDigits(word::MESSAGES + b.w) +
                    QStringLiteral(":X") + twoDigits(i % 16) + QStringLiteral("  ") + twoDigits(i + 1) +
                    QStringLiteral("  ") + messageText(ofen, i);
        for (const QString &z : zelle)
            t += QStringLiteral("  ") + z;
        zeilen.append({t, ofen * 128 + i});
    }
}

/// Switches the SMS bit of the selected message in the PLC. The image follows
/// at once only when switching on; when switching off the new value lands in
/// word 96 + w and word 696 + w keeps the old one until the next poll brings it.
void toggleSms()
{
    const int ofen = plant.Meld_Auswahl / 128;
    const MessageBit b = messageBit(plant.Meld_Auswahl % 128);
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

void openMessages(bool konfig)
{
    plant.Meld_Konfig = flag(konfig);
    plant.Meld_Auswahl = -1;
    plant.Alarme_Gezeigt = TRUE16;
}

void messagesClosed()
{
    plant.Alarme_Gezeigt = FALSE16;
    plant.Meld_Auswahl = -1;
    refreshPageNow();
}

void messagesChanged()
{
    if (plant.Alarme_Gezeigt != 0)
        screen().drawMessages(plant.Meld_Konfig == 0);
}

void messageConfigChanged(int /*ofen*/, bool geaendert)
{
    if (plant.Alarme_Gezeigt != 0)
        screen().drawMessages(geaendert);
}


std::array<MessageLamps, OFEN_MAX> CODE_Akt()
{
    std::array<MessageLamps, OFEN_MAX> lampen;
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        MessageLamps &l = lampen[ofen];
        l.sichtbar = plant.Meld_Config_Da[ofen] != 0;
        if (!l.sichtbar)
            continue;
        const uint16_t code = uint16_t(plant.Meld_Config(ofen, word::MESSAGE_CODE - word::MESSAGE_STOP));
        for (int k = 0; k < 4; ++k)
            l.farbe[k] = (code & (1u << k)) ? Farbe_Stoerung : Farbe_Normal;
    }
    return lampen;
}

QList<MessageLine> Meld_Akt()
{
    QList<MessageLine> zeilen;
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        if (plant.Meld_Konfig != 0)
            configLines(ofen, zeilen);
        else
            normalLines(ofen, zeilen);
    }
    return zeilen;
}

QString messagesTitle()
{
    return plant.Meld_Konfig != 0 ? QStringLiteral("Config") + Text_Id(text::MESSAGES) : Text_Id(text::MESSAGES);
}

QString boxCaption(int ofen)
{
    return QString::number(ofen + 1).right(1) + QStringLiteral(":") + fixedWidth(plant.Ofen_Name[ofen], 16);
}

bool boxVisible(int ofen)
{
    // "Configured" here means enabled in the plant's configuration.
    return plant.Meld_Konfig != 0 || plant.Ofen_Aktiv[ofen] != 0;
}

void tickBox(int ofen, int wert)
{
    plant.Meld_Anzeige[ofen] = i16(wert);
}

void messageLineClicked(int daten)
{
    if (plant.Meld_Konfig != 0)
        plant.Meld_Auswahl = daten;
}

std::array<QString, 8> messageKeyCaptions()
{
    std::array<QString, 8> t;
    if (plant.Meld_Konfig != 0) {
        if (plant.Meld_Auswahl >= 0 && plant.Meld_Auswahl / 128 < OFEN_MAX) {
            const MessageBit b = messageBit(plant.Meld_Auswahl % 128);
            t[2] = messageBitSet(plant.Meld_Auswahl / 128, word::MESSAGE_SMS + b.w, b.m) ? QStringLiteral("SMS OFF ")
                                                                       : QStringLiteral("SMS ON ");
        }
    } else if (plant.Seite_Ofen >= 1 && plant.Seite_Ofen <= OFEN_MAX) {
        // The furnace's type text is its 16-character name, the type the PLC
        // reports for itself.
        t[6] = QStringLiteral("Quitt ") + fixedWidth(plant.Ofen_Name[plant.Seite_Ofen - 1], 16);
    }
    t[7] = Text_Id(text::BACK);
    return t;
}

KeyEffect messageKey(int index, int flag)
{
    if (flag != 0 || index < 0 || index > 7)
        return KeyEffect::Nichts;
    if (messageKeyCaptions()[index].isEmpty())
        return KeyEffect::Nichts;
    switch (index) {
    case 2:
        toggleSms();
        return KeyEffect::Neu_Zeichnen;
    case 6:
        // The station only asks; the list changes when the PLC clears the bits.
        SEND_BEF(u8(plant.Seite_Ofen), word::COMMAND, BEFEHL_QUITT);
        return KeyEffect::Nichts;
    case 7:
        return KeyEffect::Schliessen;
    default:
        return KeyEffect::Nichts;
    }
}

} // namespace kal
