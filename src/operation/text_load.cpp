#include "operation/text_load.h"

#include "config/config_file.h"
#include "core/conversions.h"
#include "core/plant_state.h"
#include "core/word_map.h"
#include "link/frames.h"
#include "operation/message_store.h"

namespace kal {

namespace {

constexpr int SPUR_SEITE = 1122;      ///< answer of the track page
constexpr int TEXT_SEITE_ERSTE = 1110; ///< answer of text page 0 (messages 1..4)
constexpr int TEXT_SEITE_LETZTE = 1121;
constexpr int LOESCHEN = 170;         ///< the PLC asks the station to clear the word
constexpr int ANFRAGE = 109;          ///< request = counter + 109
constexpr int ANTWORT = 1000;         ///< answer = 1000 + request
constexpr int SEITEN_48 = 12;         ///< text pages of a furnace with 48 messages
constexpr int SEITEN_32 = 8;

/// The program place answer the text load has seen once, per furnace: the
/// program view takes the place from the image before the load asks on.
Table<i16, OFEN_MAX> platz_Gesehen;
StateReset reset{[] { platz_Gesehen = {}; }};

/// The page word carries a program transfer: the station asked for or sent
/// a memory place (1..6, 101..106), or the PLC answered one (1101..1106).
bool programWord(int wort)
{
    return (wort >= 1 && wort <= 6) || (wort >= 101 && wort <= 106) || (wort >= 1101 && wort <= 1106);
}

/// The identity block at word 50 marks the furnaces whose PLC has no track
/// page contents but 48 messages.
bool basis50(int f)
{
    return plant.Ofen_Basis[f] == 50;
}

/// Furnaces with the identity block at 240 or 500 keep 32 messages.
int storedMessages(int f)
{
    const int basis = plant.Ofen_Basis[f];
    return (basis == 240 || basis == 500) ? 32 : MELD_PRO_OFEN;
}

void sendPage(int ofenNr, int wert)
{
    const int f = ofenNr - 1;
    const int page = plant.Prog_Page[f];
    plant.SPS_Wort(f, page) = static_cast<i16>(wert);
    SEND_BEF(static_cast<u8>(ofenNr), static_cast<i16>(page), static_cast<i16>(wert),
             QStringLiteral("page word %1: text load").arg(wert));
}

void takeTrackPage(int f)
{
    if (!basis50(f)) {
        for (int k = 0; k < 4; ++k)
            plant.Spur(f, k) = wordsText(f, word::PAGE_TRACKS + 8 * k, 4);
        for (int k = 0; k < 2; ++k)
            plant.Spur_Titel(f, k) = wordsText(f, word::PAGE_NAMES + 8 * k, 8);
    }
    for (int i = 0; i <= 10; ++i) {
        plant.Code_A(f, i) = plant.SPS_Wort(f, word::PAGE_CODES + 2 * i);
        plant.Code_B(f, i) = plant.SPS_Wort(f, word::PAGE_CODES + 2 * i + 1);
    }
}

void takeTextPage(int f, int antwort)
{
    const int m = (antwort - TEXT_SEITE_ERSTE) * 4;
    for (int k = 0; k < 4; ++k)
        plant.Meld_Text(f, m + k) = wordsText(f, word::PAGE_TEXTS + 20 * k, 11).left(MELD_TEXT_BREITE);
}

/// Every page is in: the word is cleared, the texts that changed go to the
/// store and the configuration takes the PLC's identity.
void finishLoad(int ofenNr, int wort)
{
    const int f = ofenNr - 1;
    if (wort != 0)
        sendPage(ofenNr, 0);
    for (int n = 1; n <= storedMessages(f); ++n)
        MeldText_Sichern(f, n, plant.Meld_Text(f, n - 1));
    MeldText_Sichern(f, MELD_SATZ_SPUR, QString());
    plant.Meld_Seite[f] = -1;
    try {
        Config_Schreiben(true);
    } catch (const RunError &) {
        // The texts are stored; a configuration that cannot be written now is
        // written again by the next save.
    }
}

} // namespace

void Load_Text(int ofenNr)
{
    const int f = ofenNr - 1;
    if (f < 0 || f >= OFEN_MAX)
        raiseBounds("Load_Text", ofenNr);
    i16 &zaehler = plant.Meld_Seite[f];
    if (zaehler < 0)
        return;
    const int wort = plant.SPS_Wort(f, plant.Prog_Page[f]);

    if (wort == LOESCHEN) {
        sendPage(ofenNr, 0);
        return;
    }
    // The page word is shared with the program transfer: a request waits for
    // its answer, and an answered place stays in the image for one more block
    // so that the program view can take it.
    if (programWord(wort)) {
        if (wort < 1100 || platz_Gesehen[f] != wort) {
            platz_Gesehen[f] = static_cast<i16>(wort);
            return;
        }
    }
    platz_Gesehen[f] = 0;
    if (wort == SPUR_SEITE && zaehler == TEXT_LOAD_START) {
        zaehler = static_cast<i16>(basis50(f) ? SEITEN_48 : SEITEN_32);
        takeTrackPage(f);
    } else if (wort >= TEXT_SEITE_ERSTE && wort <= TEXT_SEITE_LETZTE) {
        if (zaehler > SEITEN_48)
            zaehler = SEITEN_48;
        if (zaehler > 0 && wort == ANTWORT + ANFRAGE + zaehler) {
            takeTextPage(f, wort);
            --zaehler;
        }
    }

    if (zaehler > 0) {
        if (plant.Write_Len[f] <= 0)
            sendPage(ofenNr, zaehler + ANFRAGE);
        return;
    }
    finishLoad(ofenNr, wort);
}

} // namespace kal
