// The built-in language table: every row of `Sprachtext` in German, English,
// French, Italian, Spanish and Dutch, with the row's width. The width is the
// field a word is shown in, and the table file and the site text file cut a
// text to it:
//    8  switch words and answers (Aus, Ein, Ja, OK)
//   10  segment commands (shown 9 wide) and the channel names
//   11  the one longer channel name
//   12  single words, column heads, status words
//   16  labels and menu entries of two words
//   20  window captions, controller parameter names
//   30  message texts (22 characters of them are shown) and one question line
//   40  lines of message boxes
// Row 148 is wider than any field in German (42 characters): the message box
// shows it whole, the table file carries its first 40.

#include "config/languages.h"

namespace kal {


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
    {1, 12, {"Befehl", "command", "Commande", "comando", "Comando", "Commando"}},
    {2, 12, {"Vorgabe", "target", "Consigne", "impostazione", "Consigna", "Instelwaarde"}},
    {3, 12, {"Laden", "load", "Charger", "carica", "Cargar", "Laden"}},
    {4, 12, {"aktuell", "current", "actuel", "attuale", "actual", "actueel"}},
    {5, 12, {"Leistung", "power", "Puissance", "potenza", "Potencia", "Vermogen"}},
    {6, 12, {"Status", "status", "État", "stato", "Estado", "Status"}},
    {7, 12, {"Connect", "connect", "Connexion", "connessione", "Conectando", "Verbinden"}},
    {8, 12, {"Offline", "offline", "Hors ligne", "offline", "Desconectado", "Offline"}},
    {9, 12, {"Online", "online", "En ligne", "online", "Conectado", "Online"}},
    {10, 10, {"Rampe", "ramp", "Rampe", "rampa", "Rampa", "rampe"}},
    {11, 10, {"Haltezeit", "dwell", "Palier", "sosta", "Mantener", "Houdtijd"}},
    {12, 10, {"Manuell", "manual", "Manuel", "manuale", "Manual", "Handmatig"}},
    {13, 10, {"Sprung", "step", "Saut", "salto", "Salto", "Sprong"}},
    {14, 10, {"Zyklus", "cycle", "Cycle", "ciclo", "Ciclo", "Cyclus"}},
    {15, 12, {"Datum", "date", "Date", "data", "Fecha", "Datum"}},
    {16, 8, {"OK", "OK", "OK", "OK", "OK", "OK"}},
    {17, 12, {"weiter", "next", "suivant", "avanti", "siguiente", "verder"}},
    {18, 12, {"kommt", "coming", "arrive", "arriva", "viene", "komt"}},
    {19, 12, {"geht", "going", "part", "rientra", "se va", "gaat"}},
    {20, 12, {"Datei", "file", "Fichier", "file", "Archivo", "Bestand"}},
    {21, 12, {"Programme", "programs", "Programmes", "programmi", "Programas", "Programma's"}},
    {22, 16, {"Seite Drucken", "print page", "Imprimer page", "stampa pagina", "Imprimir página", "Pagina afdrukken"}},
    {23, 12, {"Schliessen", "close", "Fermer", "chiudi", "Cerrar", "Sluiten"}},
    {24, 12, {"Beenden", "exit", "Quitter", "esci", "Salir", "Afsluiten"}},
    {25, 12, {"Bearbeiten", "edit", "Modifier", "modifica", "Editar", "Bewerken"}},
    {26, 12, {"Menü", "menu", "Menu", "menu", "Menú", "Menu"}},
    {27, 20, {"Temperaturkurve", "temperature curve", "Courbe température", "curva temperatura", "Curva temperatura", "Temperatuurcurve"}},
    {28, 16, {"Logdaten", "log data", "Journal", "dati log", "Datos registro", "Loggegevens"}},
    {29, 16, {"nicht vorhanden", "not available", "non disponible", "non disponibile", "no disponible", "niet aanwezig"}},
    {30, 16, {"Einstellungen", "settings", "Réglages", "impostazioni", "Ajustes", "Instellingen"}},
    {31, 20, {"Regelparameter", "control parameters", "Paramètres régul.", "parametri regolatore", "Parámetros control", "Regelparameters"}},
    {32, 16, {"Chargendaten", "batch data", "Données charge", "dati carica", "Datos de carga", "Chargegegevens"}},
    {33, 20, {"überlappend", "cascade", "en cascade", "sovrapposte", "en cascada", "trapsgewijs"}},
    {34, 20, {"untereinander", "tile horizontally", "mosaïque horizontale", "affianca orizzontale", "mosaico horizontal", "onder elkaar"}},
    {35, 20, {"nebeneinander", "tile vertically", "mosaïque verticale", "affianca verticale", "mosaico vertical", "naast elkaar"}},
    {36, 12, {"Extras", "extras", "Outils", "strumenti", "Herramientas", "Extra"}},
    {37, 12, {"Fenster", "window", "Fenêtre", "finestra", "Ventana", "Venster"}},
    {38, 12, {"Start", "start", "Début", "inizio", "Inicio", "Start"}},
    {39, 10, {"Ende", "end", "Fin", "fine", "Fin", "Einde"}},
    {40, 12, {"Dauer", "duration", "Durée", "durata", "Duración", "Duur"}},
    {41, 12, {"Sollwert", "setpoint", "Consigne", "setpoint", "Consigna", "Setpoint"}},
    {42, 12, {"Istwert", "actual value", "Mesure", "valore reale", "Valor real", "Meetwaarde"}},
    {43, 12, {"Stellwert", "output", "Sortie", "uscita", "Salida", "Stuurwaarde"}},
    {44, 12, {"Status", "status", "État", "stato", "Estado", "Status"}},
    {45, 12, {"Strom", "current", "Courant", "corrente", "Corriente", "Stroom"}},
    {46, 12, {"Spannung", "voltage", "Tension", "tensione", "Tensión", "Spanning"}},
    {47, 12, {"Widerstand", "resistance", "Résistance", "resistenza", "Resistencia", "Weerstand"}},
    {48, 12, {"Meldungen", "messages", "Messages", "avvisi", "Mensajes", "Meldingen"}},
    {49, 12, {"zurück", "back", "retour", "indietro", "atrás", "terug"}},
    {50, 12, {"Ende", "end", "Fin", "fine", "Fin", "Einde"}},
    {51, 12, {"Programm", "program", "Programme", "programma", "Programa", "Programma"}},
    {52, 12, {"aktuell", "current", "actuel", "attuale", "actual", "actueel"}},
    {53, 16, {"Daten laden", "load data", "Charger données", "carica dati", "Cargar datos", "Gegevens laden"}},
    {54, 12, {"Zoom", "zoom", "Zoom", "zoom", "Zoom", "Zoom"}},
    {55, 12, {"Zeit", "time", "Heure", "ora", "Hora", "Tijd"}},
    {56, 8, {"Aus", "off", "Arrêt", "spento", "Paro", "uit"}},
    {57, 8, {"Halt", "hold", "Pause", "pausa", "Pausa", "pauze"}},
    {58, 8, {"Ein", "on", "Marche", "acceso", "Marcha", "aan"}},
    {59, 12, {"Charge", "batch", "Charge", "carica", "Carga", "Charge"}},
    {60, 12, {"Öffnen", "open", "Ouvrir", "apri", "Abrir", "Openen"}},
    {61, 12, {"Löschen", "delete", "Supprimer", "cancella", "Borrar", "Wissen"}},
    {62, 12, {"Abbruch", "cancel", "Annuler", "annulla", "Cancelar", "Annuleren"}},
    {63, 12, {"Kopiere als", "copy as", "Copier sous", "copia come", "Copiar como", "Kopiëren als"}},
    {64, 12, {"speichern", "save", "enregistrer", "salva", "guardar", "opslaan"}},
    {65, 12, {"Speicher", "memory", "Mémoire", "memoria", "Memoria", "Geheugen"}},
    {66, 8, {"Ja", "yes", "Oui", "sì", "Sí", "Ja"}},
    {67, 8, {"Nein", "no", "Non", "no", "No", "Nee"}},
    {68, 20, {"Temperaturverlauf", "temperature profile", "Profil température", "profilo temperatura", "Perfil temperatura", "Temperatuurverloop"}},
    {69, 12, {"Sprache", "language", "Langue", "lingua", "Idioma", "Taal"}},
    {70, 12, {"System", "system", "Système", "sistema", "Sistema", "Systeem"}},
    {71, 12, {"Deutsch", "German", "Allemand", "tedesco", "Alemán", "Duits"}},
    {72, 12, {"Englisch", "English", "Anglais", "inglese", "Inglés", "Engels"}},
    {73, 12, {"Französisch", "French", "Français", "francese", "Francés", "Frans"}},
    {74, 12, {"Spanisch", "Spanish", "Espagnol", "spagnolo", "Español", "Spaans"}},
    {75, 12, {"Italienisch", "Italian", "Italien", "italiano", "Italiano", "Italiaans"}},
    {76, 16, {"Niederländisch", "Dutch", "Néerlandais", "olandese", "Neerlandés", "Nederlands"}},
    {77, 12, {"Russia", "", "", "", "", ""}},
    {78, 12, {"Sortierung", "sort order", "Tri", "ordinamento", "Orden", "Sortering"}},
    {79, 16, {"Auswahl ab", "select from", "Sélection depuis", "selezione da", "Selección desde", "Selectie vanaf"}},
    {80, 12, {"ersetzen", "replace", "remplacer", "sostituire", "reemplazar", "vervangen"}},
    {81, 12, {"vorhanden", "exists", "existe", "esiste", "existe", "bestaat"}},
    {82, 12, {"geändert", "changed", "modifié", "modificato", "modificado", "gewijzigd"}},
    {83, 8, {"Typ", "type", "Type", "tipo", "Tipo", "Type"}},
    {84, 12, {"Serien-Nr.", "serial no.", "N° série", "matricola", "N.º serie", "Serienr."}},
    {85, 12, {"Adresse", "address", "Adresse", "indirizzo", "Dirección", "Adres"}},
    {86, 16, {"Max. Temperatur", "max. temperature", "Temp. maximale", "temp. massima", "Temp. máxima", "Max. temperatuur"}},
    {87, 16, {"Freigabe Tür", "door release", "Déverr. porte", "sblocco porta", "Apertura puerta", "Vrijgave deur"}},
    {88, 16, {"Max. Steigung", "max. gradient", "Pente max.", "pendenza max.", "Pendiente máx.", "Max. helling"}},
    {89, 12, {"Freigabe", "release", "Validation", "abilitazione", "Habilitación", "Vrijgave"}},
    {90, 16, {"Auswahl Progamme", "select program", "Choix programme", "scelta programmi", "Elegir programa", "Programmakeuze"}},
    {91, 20, {"Soll das Progamm", "Should the program", "Voulez-vous vraiment", "Si vuole davvero", "¿Desea realmente", "Moet het programma"}},
    {92, 30, {"wirklich gelöscht werden", "really be deleted", "supprimer le programme", "cancellare il programma", "borrar el programa", "echt gewist worden"}},
    {93, 16, {"Übertrage", "transferring", "Transfert", "trasferimento", "Transfiriendo", "Overdragen"}},
    {94, 12, {"Fehler", "fault", "Défaut", "", "", ""}},
    {95, 12, {"Farbe", "colour", "Couleur", "", "", ""}},
    {96, 12, {"Kopieren", "copy", "Copier", "", "", ""}},
    {97, 12, {"Einfügen", "paste", "Coller", "", "", ""}},
    {99, 12, {"Start um", "start at", "Départ à", "", "", ""}},
    {100, 30, {"Automatik", "automatic", "Automatique", "automatico", "Automático", "Automatisch"}},
    {101, 30, {"angehalten", "on hold", "en pause", "in pausa", "en pausa", "gepauzeerd"}},
    {102, 30, {"Maximaltemperatur", "maximum temperature", "Température maximale", "temperatura massima", "Temperatura máxima", "Maximumtemperatuur"}},
    {103, 30, {"Bimetall ausgelöst", "bimetal tripped", "Bilame déclenché", "bimetallo intervenuto", "Bimetal disparado", "Bimetaal geactiveerd"}},
    {104, 30, {"Tür geöffnet", "door opened", "Porte ouverte", "porta aperta", "Puerta abierta", "Deur geopend"}},
    {105, 30, {"Hubantrieb", "lift drive", "Entraînement levage", "motore sollevamento", "Motor elevación", "Hefaandrijving"}},
    {106, 30, {"RM Hauptschütz fehlt", "no fb. main contactor", "Retour contact. princ.", "manca conferma teler.", "Falta conf. contactor", "Geen terugm. hoofdsch."}},
    {107, 30, {"Ofen gekippt", "furnace tilted", "", "", "", ""}},
    {108, 30, {"Endschalter eingeschwenkt", "limit switch swung in", "Fin de course rentré", "finecorsa rientrato", "Final carrera dentro", "Eindschak. ingezwenkt"}},
    {109, 30, {"Endschalter ausgeschwenkt", "limit switch swung out", "Fin de course sorti", "finecorsa uscito", "Final carrera fuera", "Eindschak. uitgezwenkt"}},
    {116, 30, {"Netzspannung fehlt", "mains voltage missing", "Manque tension réseau", "manca tensione rete", "Falta tensión red", "Netspanning ontbreekt"}},
    {117, 30, {"Drehzahl Kammerkühlung", "chamber cooling speed", "Vitesse refroid. four", "giri raffredd. camera", "Veloc. refrig. cámara", "Toerental kamerkoeling"}},
    {118, 30, {"Temperatur zu gering", "temperature too low", "Température trop basse", "temperatura bassa", "Temperatura muy baja", "Temperatuur te laag"}},
    {119, 30, {"Kühlwasser prüfen", "check cooling water", "", "", "", ""}},
    {131, 30, {"Fehler USB-Stick", "USB stick fault", "", "", "", ""}},
    {148, 40, {"Das Programm ist für diesen Ofen ungültig!", "Program not valid for this furnace!", "Programme non valide pour ce four !", "Programma non valido per questo forno!", "¡Programa no válido para este horno!", "Programma ongeldig voor deze oven!"}},
    {149, 40, {"Befehle Manuell und Zyklus vorhanden!", "Manual and cycle commands present!", "Commandes Manuel et Cycle présentes !", "Presenti comandi manuale e ciclo!", "¡Comandos Manual y Ciclo presentes!", "Commando's Handmatig en Cyclus aanwezig!"}},
    {150, 40, {"Befehl Manuell vorhanden!", "Manual command present!", "Commande Manuel présente !", "Presente comando manuale!", "¡Comando Manual presente!", "Commando Handmatig aanwezig!"}},
    {151, 40, {"Befehl Zyklus vorhanden!", "Cycle command present!", "Commande Cycle présente !", "Presente comando ciclo!", "¡Comando Ciclo presente!", "Commando Cyclus aanwezig!"}},
    {152, 40, {"Das Formular kann auf diesen Drucker", "This form cannot be printed", "Ce formulaire ne peut pas être", "Il modulo non può essere stampato", "¡El formulario no se puede imprimir", "Het formulier kan niet op deze printer"}},
    {153, 40, {"nicht gedruckt werden!", "on this printer!", "imprimé sur cette imprimante !", "su questa stampante!", "en esta impresora!", "worden afgedrukt!"}},
    {154, 40, {"Datei nicht gefunden", "File not found", "Fichier introuvable", "File non trovato", "Archivo no encontrado", "Bestand niet gevonden"}},
    {155, 40, {"Bitte Einstellungen prüfen", "Please check the settings", "Veuillez vérifier les réglages", "Controllare le impostazioni", "Compruebe los ajustes", "Controleer de instellingen"}},
    {156, 16, {"Info Charge", "batch info", "Info charge", "info carica", "Info carga", "Info charge"}},
    {157, 20, {"Proportionalbeiwert", "proportional gain", "Gain proportionnel", "guadagno proporz.", "Ganancia proporc.", "P-versterking"}},
    {158, 20, {"Integrationszeit", "integral time", "Temps intégral", "tempo integrale", "Tiempo integral", "Integratietijd"}},
    {159, 20, {"Differenzierzeit", "derivative time", "Temps dérivé", "tempo derivativo", "Tiempo derivativo", "Differentiatietijd"}},
    {160, 20, {"Abtastzeit", "sample time", "Période échant.", "tempo campionam.", "Tiempo muestreo", "Bemonsteringstijd"}},
    {161, 10, {"Kammer    ", "chamber   ", "", "", "", "Kamer     "}},
    {162, 10, {"Vorwärm   ", "preheat   ", "", "", "", "Voorwarm  "}},
    {163, 10, {"Kühlung   ", "cooling   ", "", "", "", "Koeling   "}},
    {164, 10, {"Druck     ", "pressure  ", "", "", "", "Druk      "}},
    {165, 10, {"Vakuum    ", "vacuum    ", "", "", "", "Vacuüm    "}},
    {166, 10, {"Zuluft    ", "air supply", "", "", "", "Toevoer   "}},
    {167, 11, {"Abluft     ", "exhaust air", "", "", "", "Afzuiging  "}},
    {168, 10, {"Umluft    ", "circ. air ", "", "", "", "Circulatie"}},
    {169, 10, {"Transport ", "transport ", "", "", "", "Transport "}},
    {170, 8, {"Aufgabe ", "loading ", "", "", "", "Invoer  "}},
    {171, 10, {"Abgabe    ", "unloading ", "", "", "", "Afvoer    "}},
};

/// Message texts that differ only by their number: German, English, French,
/// Italian, Spanish, Dutch, each followed by the number shown.
struct NumberedRows {
    int first;      ///< first message number
    int last;       ///< last message number
    int shown;      ///< number in the text of the first message
    const char *text[SPRACHEN];
};

const NumberedRows numbered[] = {
    {11, 16, 1, {"Fehler Heizung ", "heating fault ", "Défaut chauffage ", "guasto riscaldamento ", "Fallo calefacción ", "Storing verwarming "}},
    {21, 31, 21, {"Meldung ", "message ", "Message ", "avviso ", "Mensaje ", "Melding "}},
    {33, 48, 33, {"Meldung ", "message ", "Message ", "avviso ", "Mensaje ", "Melding "}},
};

constexpr int MELD_BREITE = 30; ///< width of the message rows

} // namespace

void buildLanguageTable()
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
                plant.Sprachtext(col, id) =
                    word.isEmpty() ? QString() : word + QString::number(m - n.first + n.shown);
            }
        }
    }

    for (int m = 0; m < MELD_PRO_OFEN; ++m)
        for (int col = 0; col < SPRACHEN; ++col)
            for (int ofen = 0; ofen < OFEN_MAX; ++ofen)
                plant.Meldtext[m](col, ofen) = plant.Sprachtext(col, MELD_ZEILE + m);

    plant.Sprache = 0;
}

} // namespace kal
