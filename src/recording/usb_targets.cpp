// The targets of the USB import: the "US" batch files that the records of a
// source go into, one file open per record.

#include "core/dialogs.h"
#include "config/text_ids.h"
#include "recording/batch_file.h"
#include "recording/batch_names.h"
#include "recording/recorder_block.h"
#include "recording/usb_import.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace kal {

namespace {

/// Answers of the three-button question, as the message box numbers them.
constexpr int ANTWORT_JA = 6;
constexpr int ANTWORT_NEIN = 7;
constexpr int ANTWORT_ABBRECHEN = 2;

/// The records 2.. of the form-20 target in hand, so that the duplicate test
/// costs the same for every record however long the file grows. It is read
/// once from the file, kept up to date with every record written, and read
/// anew whenever the file's size or time tells that someone else changed it.
struct TargetRecords {
    QString pfad;
    qint64 groesse = -1;
    QDateTime zeit;
    QSet<QByteArray> saetze;

    void laden(BatchFile &datei)
    {
        pfad = datei.path();
        saetze.clear();
        forEachRecord(datei, 2, datei.count(), [&](int, const BatchRecord &s) {
            saetze.insert(packRecord(s));
            return true;
        });
    }
    void remember()
    {
        const QFileInfo fi(pfad);
        groesse = fi.size();
        zeit = fi.lastModified();
    }
    bool stillSame(const QString &p) const
    {
        const QFileInfo fi(p);
        return p == pfad && fi.size() == groesse && fi.lastModified() == zeit;
    }
};
TargetRecords ziel20;

StateReset reset{[] { ziel20 = TargetRecords{}; }};

/// `USB_Neu` exists: replace it (yes), leave the target as it was (no), or
/// skip this batch (cancel).
void askTarget()
{
    UsbState &u = USB;
    const QString text = u.USB_Neu + QStringLiteral("\n") + Text_Id(text::EXISTS).trimmed() + QStringLiteral("!\n") +
                         Text_Id(text::REPLACE).trimmed() + QStringLiteral("? ");
    const QStringList knoepfe{Text_Id(text::YES).trimmed(), Text_Id(text::NO).trimmed(),
                              Text_Id(text::CANCEL).trimmed()};
    static constexpr int antworten[] = {ANTWORT_JA, ANTWORT_NEIN, ANTWORT_ABBRECHEN};
    const int k = dialogs().choice(text, QStringLiteral("USB-Import"), knoepfe);
    const int antwort = k >= 0 && k < 3 ? antworten[k] : ANTWORT_NEIN;
    if (antwort == ANTWORT_JA) {
        QFile::remove(u.USB_Neu);
        u.USB_Ziel = u.USB_Neu;
    } else if (antwort == ANTWORT_ABBRECHEN) {
        u.USB_Neu.clear();
        u.USB_Ziel.clear();
    }
}

/// Records 1..4 and 8..39 of a new target from the source's header; no
/// version record 5.
void writeHeader(BatchFile &datei, const RecordTime &zeit)
{
    std::array<i16, 12> a{}, b{};
    for (int p = 0; p < KENNUNG_PAARE; ++p) {
        a[p] = plant.Ofen_Kennung_A(0, p);
        b[p] = plant.Ofen_Kennung_B(0, p);
    }
    const std::vector<QString> texte(USB.USB_Texte.begin(), USB.USB_Texte.end());
    for (const auto &[nr, satz] : headerRecords(USB.USB_Name, zeit, a, b, texte, false))
        datei.write(nr, satz);
}

/// One sample group in the 40-word form of 154.
void putGroup80(const LogBlock &w, const RecordTime &zeit)
{
    UsbState &u = USB;
    BatchFile datei;
    const i16 n = w[6]; // the low word of the batch number alone
    if (n != u.USB_Charge) {
        u.USB_Charge = n;
        u.USB_Neu = usbTargetPath(u.USB_Serie, n, zeit.Tag, zeit.Monat, zeit.Jahr);
        if (QFile::exists(u.USB_Neu))
            askTarget();
        else
            u.USB_Ziel = u.USB_Neu;
        if (u.USB_Ziel.isEmpty())
            return;
        datei.open(u.USB_Ziel);
        writeHeader(datei, zeit);
    } else if (u.USB_Ziel.isEmpty()) {
        // A batch whose target was refused: its records are passed over.
        if (QCoreApplication::instance())
            QCoreApplication::processEvents();
        return;
    }
    datei.open(u.USB_Ziel);
    const int nr = nextDataRecord(datei.count());
    const auto gruppe = groupRecords(w, zeit, true);
    if (Check_LogSatz80(datei, nr, gruppe[0]) == 0)
        return;
    datei.write(nr, gruppe.data(), int(gruppe.size()));
}

} // namespace

void Charge80(const std::vector<i16> &w, i16 art)
{
    if (art != Log_Kompakt) {
        LogBlock b{};
        std::copy_n(w.begin(), std::min<size_t>(w.size(), b.size()), b.begin());
        b[0] = Satz_Charge;
        putGroup80(b, readUsbDate(b[1], b[2]).zeit);
        return;
    }
    // The two compact blocks go through the scratch words of furnace 0.
    for (int i = 0; i < 40; ++i)
        plant.SPS_Wort(0, USB_KOMPAKT_ADRESSE + i) = i < int(w.size()) ? w[i] : i16(0);
    for (int basis : {USB_KOMPAKT_ADRESSE, USB_KOMPAKT_ADRESSE + 20}) {
        LogBlock b{};
        Kompakt_Lesen(0, basis, b, true);
        const UsbDate d = readUsbDate(b[1], b[2]);
        if (!d.ok)
            return; // a block with an impossible date ends the record
        putGroup80(b, d.zeit);
    }
}

void Charge20(const std::vector<i16> &w, const RecordTime &zeit)
{
    UsbState &u = USB;
    const i16 art = w.at(0);
    if (art > 200)
        u.USB_Charge = static_cast<i16>(art - 200);
    if (u.USB_Charge <= 0)
        return;
    // The day of this record names the file: a batch over midnight goes on
    // in a second file.
    const QString ziel = usbTargetPath(u.USB_Serie, u.USB_Charge, zeit.Tag, zeit.Monat, zeit.Jahr);
    BatchFile datei;
    datei.open(ziel);
    const int saetze = std::max(datei.count(), 1);
    if (saetze == 1)
        datei.write(1, nameRecord(u.USB_Name, zeit));
    LogBlock b{};
    std::copy_n(w.begin(), std::min<size_t>(w.size(), 10), b.begin());
    const BatchRecord satz = Satz_Einzel(b, zeit);
    if (!ziel20.stillSame(ziel))
        ziel20.laden(datei);
    const QByteArray bytes = packRecord(satz);
    // A record equal to any record of the target from record 2 on is there
    // already: the same source imported twice doubles nothing.
    const bool doppelt = ziel20.saetze.contains(bytes);
    if (!doppelt)
        datei.write(saetze + 1, satz);
    datei.close();
    if (!doppelt)
        ziel20.saetze.insert(bytes);
    ziel20.remember();
}

} // namespace kal
