#include "recording/usb_import.h"

#include "config/paths.h"
#include "core/conversions.h"
#include "core/dialogs.h"
#include "core/screen.h"
#include "recording/batch_names.h"

#include <QFile>
#include <exception>

namespace kal {

UsbState USB;

namespace {

/// The open source (the import's input channel).
UsbSource quelle;

StateReset reset{[] {
    quelle.close();
    USB = UsbState{};
}};

/// Clears the step's running mark also when the step ends early.
struct StepGuard {
    StepGuard() { USB.laeuft = true; }
    ~StepGuard() { USB.laeuft = false; }
};

/// The one box of the import: "USB-Import ", the source, the text.
void Meldung(const QString &text)
{
    dialogs().message(QStringLiteral("USB-Import \n") + USB.USB_Pfad + QStringLiteral("\n") + text);
}

void reportWrongLength(int kopfZahl)
{
    Meldung(QStringLiteral("wrong Len\n") + QString::number(USB.USB_Saetze) + QStringLiteral("/") +
            QString::number(kopfZahl));
}

/// Opens the source and checks its header. A wrong header leaves the source
/// closed and the index where it is, so the next tick shows the box again.
void openSource()
{
    UsbState &u = USB;
    if (!quelle.open(u.USB_Pfad, 60)) {
        // Not a readable file (gone meanwhile, or no right to read it): the
        // import goes on with the next one.
        ++u.USB_Index;
        return;
    }
    u.USB_Saetze = quelle.count();
    std::vector<i16> h = quelle.read(1);
    u.USB_Satz = 2;
    if (h[0] != USB_MARKE) {
        quelle.close();
        Meldung(QStringLiteral("wrong Header"));
        return;
    }
    const int kopfZahl = h[1] + 1;
    switch (h[2]) {
    case 60:
        u.USB_Satzlaenge = 60;
        if (u.USB_Saetze == kopfZahl)
            Header60(h);
        else
            reportWrongLength(kopfZahl);
        break;
    case 80:
        u.USB_Satzlaenge = 80;
        quelle.open(u.USB_Pfad, 80);
        u.USB_Saetze = quelle.count();
        if (u.USB_Saetze < 18) {
            Meldung(QStringLiteral("wrong header-len"));
            break;
        }
        h = quelle.read(1);
        if (u.USB_Saetze == kopfZahl)
            Header80(h, quelle);
        else
            reportWrongLength(kopfZahl);
        break;
    case 20:
        u.USB_Satzlaenge = 20;
        quelle.open(u.USB_Pfad, 20);
        u.USB_Saetze = quelle.count();
        u.USB_Satz = 3;
        // A wrong count is told, and the file imported all the same.
        if (u.USB_Saetze != kopfZahl)
            reportWrongLength(kopfZahl);
        u.USB_Offen = -1;
        break;
    default:
        Meldung(QStringLiteral("wrong Index"));
        break;
    }
    if (u.USB_Offen == 0)
        quelle.close();
}

/// The source is done: closed, deleted, and the list read anew.
void finishSource()
{
    UsbState &u = USB;
    u.USB_Satz = 1;
    u.USB_Index = -1;
    u.USB_Offen = 0;
    quelle.close();
    if (!QFile::remove(u.USB_Pfad) && QFile::exists(u.USB_Pfad))
        LogList_Add(QStringLiteral("USB-Import: ") + u.USB_Pfad + QStringLiteral(" not deleted"));
    readSourceList();
}

/// Up to 50 records of the open source.
void processRecords()
{
    UsbState &u = USB;
    for (int k = 0; k < USB_SAETZE_TAKT; ++k) {
        if (u.USB_Satz > u.USB_Saetze) {
            finishSource();
            return;
        }
        const std::vector<i16> w = quelle.read(u.USB_Satz);
        const UsbDate datum = readUsbDate(w[1], w[2]);
        if (datum.ok) {
            i16 art = w[0];
            if (u.USB_Satzlaenge == 80 && art == 0)
                art = Satz_Charge;
            const bool gruppe = art == Satz_Charge || art == 131;
            if (gruppe && u.USB_Satzlaenge == 80)
                Charge80(w, art);
            else if (!gruppe && u.USB_Satzlaenge == 20)
                Charge20(w, datum.zeit);
        }
        ++u.USB_Satz;
        // The import was switched off from a box inside the step.
        if (u.USB_Offen == 0)
            return;
    }
}

void noteError(const QString &text)
{
    if (text == USB.fehler)
        return;
    USB.fehler = text;
    LogList_Add(QStringLiteral("USB-Import: ") + USB.USB_Pfad + QStringLiteral(" record ") +
                QString::number(USB.USB_Satz) + QStringLiteral(": ") + text);
}

} // namespace

void readSourceList()
{
    USB.Quell_Liste = usbSources(plant.Pfad[2]);
    USB.USB_Dateien = static_cast<i16>(std::min<qsizetype>(USB.Quell_Liste.size(), 32767));
}

void USB_Button()
{
    UsbState &u = USB;
    if (u.USB_Aktiv != 0) {
        u.USB_Aktiv = 0;
        u.USB_Offen = 0;
        quelle.close();
    } else if (u.USB_Dateien > 0) {
        u.USB_Offen = 0;
        u.USB_Aktiv = -1;
        u.USB_Index = -1;
    }
}

UsbDisplay USB_ACT()
{
    UsbState &u = USB;
    if (u.USB_Dateien < 1)
        u.USB_Aktiv = 0;
    UsbDisplay a;
    a.aktiv = u.USB_Aktiv != 0;
    a.caption = QStringLiteral("USB_Import");
    if (a.aktiv)
        a.text = QStringLiteral("USB_Import, ") + QString::number(u.USB_Dateien) + QStringLiteral(" Files") +
                 QStringLiteral(",  Satz:") + QString::number(u.USB_Satz);
    return a;
}

bool usbImportTick()
{
    UsbState &u = USB;
    if (u.USB_Dateien < 1)
        u.USB_Aktiv = 0;
    if (u.USB_Aktiv == 0) {
        if (plant.USB_Menue != 0)
            readSourceList();
        return false;
    }
    if (u.laeuft)
        return true;
    StepGuard sperre;
    if (u.USB_Index < 0)
        u.USB_Index = 1;
    if (u.USB_Index < 1 || u.USB_Index > u.Quell_Liste.size())
        return true;
    const QString name = u.Quell_Liste[u.USB_Index - 1];
    u.USB_Pfad = joinPath(plant.Pfad[2], name);
    if (!usbNameValid(name)) {
        ++u.USB_Index;
        return true;
    }
    try {
        if (u.USB_Offen != 0)
            processRecords();
        else
            openSource();
        u.fehler.clear();
    } catch (const RunError &e) {
        noteError(QString::fromStdString(e.what()));
    } catch (const std::exception &e) {
        noteError(QString::fromStdString(e.what()));
    }
    return true;
}

void Header60(const std::vector<i16> &h)
{
    USB.USB_Serie = serialWithoutDashes(USB_Text(h, 4, 6));
    USB.USB_Name = USB_Text(h, 10, 8);
    USB.USB_Offen = -1;
}

void Header80(const std::vector<i16> &h, UsbSource &q)
{
    USB.USB_Serie = Text_Sauber(serialWithoutDashes(USB_Text(h, 4, 6)));
    USB.USB_Name = Text_Sauber(USB_Text(h, 10, 8));
    // The identity of the panel goes into slot 0, the slot of the batch on
    // view, from where the target's header takes it.
    for (int p = 0; p < KENNUNG_PAARE; ++p) {
        const bool da = p < KENNUNG_PAARE - 1;
        plant.Ofen_Kennung_A(0, p) = da ? h.at(18 + 2 * p) : i16(0);
        plant.Ofen_Kennung_B(0, p) = da ? h.at(19 + 2 * p) : i16(0);
    }
    for (int r = 3; r <= 18; ++r) {
        const std::vector<i16> w = q.read(r);
        USB.USB_Texte[2 * (r - 3)] = USB_Text(w, 0, 11);
        USB.USB_Texte[2 * (r - 3) + 1] = USB_Text(w, 20, 11);
    }
    USB.USB_Satz = 19;
    USB.USB_Offen = -1;
}

} // namespace kal
