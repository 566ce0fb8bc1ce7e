// The built-in language table: every row of `Sprachtext` in German, English,
// French, Italian, Spanish and Dutch, with the row's width. The widths are the
// fields the words are shown in; the table file and the site text file use
// them to cut a text.

#include "config/languages.h"

namespace kal {

Table<Table2<QString, SPRACHEN, OFEN_MAX>, MELD_PRO_OFEN> Meldtext;

namespace {

struct Row {
    int id;
    int width;
    const char *text[SPRACHEN]; ///< UTF-8; "" is an empty entry
};

// Rows that aren't listed stay empty (row 98). Row 77 names a language that
// has no column of its own: only the German entry is set.
// Rows 94..97, 99, 107, 119, 131 and 161..171 came after the first
// translation round: they carry German and English, the edit words French,
// the channel names Dutch; the other columns were never translated.
// The channel names (161..171) keep their blanks: the channel tables use
// them as fixed-width names, so every language pads them to the same length.
const Row rows[] = {
    {0, 12, {"Ofen", "furnace", "Four", "forno", "Horno", "Oven"}},
    {1, 12, {"Befehl", "", "", "", "", ""}},
    {2, 12, {"Vorgabe", "", "", "", "", ""}},
    {3, 12, {"Laden", "", "", "", "", ""}},
    {4, 12, {"aktuell", "", "", "", "", ""}},
    {5, 12, {"Leistung", "", "", "", "", ""}},
    {6, 12, {"Status", "", "", "", "", ""}},
    {7, 12, {"Connect", "", "", "", "", ""}},
    {8, 12, {"Offline", "", "", "", "", ""}},
    {9, 12, {"Online", "", "", "", "", ""}},
    {10, 10, {"Rampe", "ramp", "Rampe", "rampa", "Rampa", "rampe"}},
    {11, 10, {"Haltezeit", "", "", "", "", ""}},
    {12, 10, {"Manuell", "", "", "", "", ""}},
    {13, 10, {"Sprung", "", "", "", "", ""}},
    {14, 10, {"Zyklus", "", "", "", "", ""}},
    {15, 12, {"Datum", "", "", "", "", ""}},
    {16, 8, {"OK", "", "", "", "", ""}},
    {17, 12, {"weiter", "", "", "", "", ""}},
    {18, 12, {"kommt", "coming", "arrive", "arriva", "viene", "komt"}},
    {19, 12, {"geht", "", "", "", "", ""}},
    {20, 12, {"Datei", "", "", "", "", ""}},
    {21, 12, {"Programme", "", "", "", "", ""}},
    {22, 16, {"Seite Drucken", "", "", "", "", ""}},
    {23, 12, {"Schliessen", "", "", "", "", ""}},
    {24, 12, {"Beenden", "", "", "", "", ""}},
    {25, 12, {"Bearbeiten", "", "", "", "", ""}},
    {26, 12, {"Menü", "", "", "", "", ""}},
    {27, 20, {"Temperaturkurve", "", "", "", "", ""}},
    {28, 16, {"Logdaten", "", "", "", "", ""}},
    {29, 16, {"nicht vorhanden", "", "", "", "", ""}},
    {30, 16, {"Einstellungen", "", "", "", "", ""}},
    {31, 20, {"Regelparameter", "", "", "", "", ""}},
    {32, 16, {"Chargendaten", "", "", "", "", ""}},
    {33, 20, {"überlappend", "", "", "", "", ""}},
    {34, 20, {"untereinander", "", "", "", "", ""}},
    {35, 20, {"nebeneinander", "", "", "", "", ""}},
    {36, 12, {"Extras", "", "", "", "", ""}},
    {37, 12, {"Fenster", "", "", "", "", ""}},
    {38, 12, {"Start", "", "", "", "", ""}},
    {39, 10, {"Ende", "", "", "", "", ""}},
    {40, 12, {"Dauer", "", "", "", "", ""}},
    {41, 12, {"Sollwert", "", "", "", "", ""}},
    {42, 12, {"Istwert", "", "", "", "", ""}},
    {43, 12, {"Stellwert", "", "", "", "", ""}},
    {44, 12, {"Status", "", "", "", "", ""}},
    {45, 12, {"Strom", "", "", "", "", ""}},
    {46, 12, {"Spannung", "", "", "", "", ""}},
    {47, 12, {"Widerstand", "", "", "", "", ""}},
    {48, 12, {"Meldungen", "messages", "Messages", "avvisi", "Mensajes", "Meldingen"}},
    {49, 12, {"zurück", "", "", "", "", ""}},
    {50, 12, {"Ende", "", "", "", "", ""}},
    {51, 12, {"Programm", "", "", "", "", ""}},
    {52, 12, {"aktuell", "", "", "", "", ""}},
    {53, 16, {"Daten laden", "", "", "", "", ""}},
    {54, 12, {"Zoom", "", "", "", "", ""}},
    {55, 12, {"Zeit", "", "", "", "", ""}},
    {56, 8, {"Aus", "", "", "", "", ""}},
    {57, 8, {"Halt", "", "", "", "", ""}},
    {58, 8, {"Ein", "", "", "", "", ""}},
    {59, 12, {"Charge", "", "", "", "", ""}},
    {60, 12, {"Öffnen", "", "", "", "", ""}},
    {61, 12, {"Löschen", "", "", "", "", ""}},
    {62, 12, {"Abbruch", "", "", "", "", ""}},
    {63, 12, {"Kopiere als", "", "", "", "", ""}},
    {64, 12, {"speichern", "", "", "", "", ""}},
    {65, 12, {"Speicher", "", "", "", "", ""}},
    {66, 8, {"Ja", "", "", "", "", ""}},
    {67, 8, {"Nein", "", "", "", "", ""}},
    {68, 20, {"Temperaturverlauf", "", "", "", "", ""}},
    {69, 12, {"Sprache", "", "", "", "", ""}},
    {70, 12, {"System", "", "", "", "", ""}},
    {71, 12, {"Deutsch", "", "", "", "", ""}},
    {72, 12, {"Englisch", "", "", "", "", ""}},
    {73, 12, {"Französisch", "", "", "", "", ""}},
    {74, 12, {"Spanisch", "", "", "", "", ""}},
    {75, 12, {"Italienisch", "", "", "", "", ""}},
    {76, 16, {"Niederländisch", "", "", "", "", ""}},
    {77, 12, {"Russia", "", "", "", "", ""}},
    {78, 12, {"Sortierung", "", "", "", "", ""}},
    {79, 16, {"Auswahl ab", "", "", "", "", ""}},
    {80, 12, {"ersetzen", "", "", "", "", ""}},
    {81, 12, {"vorhanden", "", "", "", "", ""}},
    {82, 12, {"geändert", "", "", "", "", ""}},
    {83, 8, {"Typ", "", "", "", "", ""}},
    {84, 12, {"Serien-Nr.", "", "", "", "", ""}},
    {85, 12, {"Adresse", "", "", "", "", ""}},
    {86, 16, {"Max. Temperatur", "", "", "", "", ""}},
    {87, 16, {"Freigabe Tür", "", "", "", "", ""}},
    {88, 16, {"Max. Steigung", "", "", "", "", ""}},
    {89, 12, {"Freigabe", "", "", "", "", ""}},
    {90, 16, {"Auswahl Progamme", "", "", "", "", ""}},
    {91, 20, {"Soll das Progamm", "", "", "", "", ""}},
    {92, 30, {"wirklich gelöscht werden", "", "", "", "", ""}},
    {93, 16, {"Übertrage", "", "", "", "", ""}},
    {94, 12, {"Fehler", "", "", "", "", ""}},
    {95, 12, {"Farbe", "", "", "", "", ""}},
    {96, 12, {"Kopieren", "", "", "", "", ""}},
    {97, 12, {"Einfügen", "", "", "", "", ""}},
    {99, 12, {"Start um", "", "", "", "", ""}},
    {100, 30, {"Automatik", "", "", "", "", ""}},
    {101, 30, {"angehalten", "", "", "", "", ""}},
    {102, 30, {"Maximaltemperatur", "", "", "", "", ""}},
    {103, 30, {"Bimetall ausgelöst", "", "", "", "", ""}},
    {104, 30, {"Tür geöffnet", "door opened", "Porte ouverte", "porta aperta", "Puerta abierta", "Deur geopend"}},
    {105, 30, {"Hubantrieb", "", "", "", "", ""}},
    {106, 30, {"RM Hauptschütz fehlt", "", "", "", "", ""}},
    {107, 30, {"Ofen gekippt", "", "", "", "", ""}},
    {108, 30, {"Endschalter eingeschwenkt", "", "", "", "", ""}},
    {109, 30, {"Endschalter ausgeschwenkt", "", "", "", "", ""}},
    {116, 30, {"Netzspannung fehlt", "", "", "", "", ""}},
    {117, 30, {"Drehzahl Kammerkühlung", "", "", "", "", ""}},
    {118, 30, {"Temperatur zu gering", "", "", "", "", ""}},
    {119, 30, {"Kühlwasser prüfen", "", "", "", "", ""}},
    {131, 30, {"Fehler USB-Stick", "", "", "", "", ""}},
    {148, 40, {"Das Programm ist für diesen Ofen ungültig!", "", "", "", "", ""}},
    {149, 40, {"Befehle Manuell und Zyklus vorhanden!", "", "", "", "", ""}},
    {150, 40, {"Befehl Manuell vorhanden!", "", "", "", "", ""}},
    {151, 40, {"Befehl Zyklus vorhanden!", "", "", "", "", ""}},
    {152, 40, {"Das Formular kann auf diesen Drucker", "", "", "", "", ""}},
    {153, 40, {"nicht gedruckt werden!", "", "", "", "", ""}},
    {154, 40, {"Datei nicht gefunden", "", "", "", "", ""}},
    {155, 40, {"Bitte Einstellungen prüfen", "", "", "", "", ""}},
    {156, 16, {"Info Charge", "", "", "", "", ""}},
    {157, 20, {"Proportionalbeiwert", "", "", "", "", ""}},
    {158, 20, {"Integrationszeit", "", "", "", "", ""}},
    {159, 20, {"Differenzierzeit", "", "", "", "", ""}},
    {160, 20, {"Abtastzeit", "", "", "", "", ""}},
    {161, 10, {"Kammer    ", "", "", "", "", ""}},
    {162, 10, {"Vorwärm   ", "", "", "", "", ""}},
    {163, 10, {"Kühlung   ", "", "", "", "", ""}},
    {164, 10, {"Druck     ", "", "", "", "", ""}},
    {165, 10, {"Vakuum    ", "", "", "", "", ""}},
    {166, 10, {"Zuluft    ", "", "", "", "", ""}},
    {167, 11, {"Abluft     ", "", "", "", "", ""}},
    {168, 10, {"Umluft    ", "", "", "", "", ""}},
    {169, 10, {"Transport ", "", "", "", "", ""}},
    {170, 8, {"Aufgabe ", "", "", "", "", ""}},
    {171, 10, {"Abgabe    ", "", "", "", "", ""}},
};

/// Message texts that differ only by their number: German, English, French,
/// Italian, Spanish, Dutch, each followed by the number.
struct NumberedRows {
    int first;      ///< first message number
    int last;       ///< last message number
    const char *text[SPRACHEN];
};

const NumberedRows numbered[] = {
    {11, 16, {"Fehler Heizung ", "", "", "", "", ""}},
    {21, 31, {"Meldung ", "", "", "", "", ""}},
    {33, 48, {"Meldung ", "", "", "", "", ""}},
};

constexpr int MELD_BREITE = 30; ///< width of the message rows

} // namespace

void Sprachtext_Fuellen()
{
    plant.Sprachtext.fill(QString());
    plant.Sprachbreite.fill(0);
    // Row 98 has no text but still a width, so the table file has a field for it.
    plant.Sprachbreite[98] = 12;

    for (const Row &row : rows) {
        plant.Sprachbreite[row.id] = static_cast<u8>(row.width);
        for (int col = 0; col < SPRACHEN; ++col)
            plant.Sprachtext(col, row.id) = QString::fromUtf8(row.text[col]);
    }
    for (const NumberedRows &n : numbered) {
        for (int m = n.first; m <= n.last; ++m) {
            const int id = MELD_ZEILE - 1 + m;
            plant.Sprachbreite[id] = MELD_BREITE;
            for (int col = 0; col < SPRACHEN; ++col) {
                const QString word = QString::fromUtf8(n.text[col]);
                plant.Sprachtext(col, id) = word.isEmpty() ? QString() : word + QString::number(m);
            }
        }
    }

    for (int m = 0; m < MELD_PRO_OFEN; ++m)
        for (int col = 0; col < SPRACHEN; ++col)
            for (int ofen = 0; ofen < OFEN_MAX; ++ofen)
                Meldtext[m](col, ofen) = plant.Sprachtext(col, MELD_ZEILE + m);

    plant.Sprache = 0;
}

} // namespace kal
