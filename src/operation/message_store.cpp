#include "operation/message_store.h"

#include "core/conversions.h"
#include "core/dates.h"
#include "operation/messages_view_model.h"

#include <QDir>
#include <QFile>

namespace kal {

namespace {

// The store stays open for the whole run, like the message file of the
// original station on its fixed file number.
QFile *datei = nullptr;
StoreAccesses zugriffe;
StateReset reset{[] { closeMessageStore(); }};

void writeTime(QByteArray &b, int pos, const MessageTime &z)
{
    b[pos + 0] = char(z.Tag);
    b[pos + 1] = char(z.Monat);
    b[pos + 2] = char(z.Jahr);
    b[pos + 3] = char(z.Stunde);
    b[pos + 4] = char(z.Minute);
    b[pos + 5] = char(z.Sekunde);
}

MessageTime readTime(const QByteArray &b, int pos)
{
    MessageTime z;
    z.Tag = u8(b[pos + 0]);
    z.Monat = u8(b[pos + 1]);
    z.Jahr = u8(b[pos + 2]);
    z.Stunde = u8(b[pos + 3]);
    z.Minute = u8(b[pos + 4]);
    z.Sekunde = u8(b[pos + 5]);
    return z;
}

MessageTime timeOf(const QDateTime &d)
{
    MessageTime z;
    z.Tag = u8(d.date().day());
    z.Monat = u8(d.date().month());
    z.Jahr = u8((d.date().year() - 2000) & 0xFF);
    z.Stunde = u8(d.time().hour());
    z.Minute = u8(d.time().minute());
    z.Sekunde = u8(d.time().second());
    return z;
}

/// The 40 bytes of a text field: Latin-1, blank-padded, cut at 40.
QByteArray textField(const QString &text)
{
    return Latin1Bytes(fixedWidth(text, MELD_TEXT_LAENGE));
}

/// Text of a stored field as the plant uses it: control characters and
/// trailing blanks gone (a never written record is all zeros and reads as ""),
/// leading blanks trimmed as well.
QString fieldText(const QByteArray &bytes)
{
    return Text_Sauber(Latin1Text(bytes)).trimmed();
}

/// Stores `feld` as the text of record `satzNr` unless it is there already.
void storeText(int satzNr, const QByteArray &feld)
{
    MessageRecord s = readMessage(satzNr);
    if (s.Text == feld)
        return;
    s.Text = feld;
    writeMessage(satzNr, s);
}

} // namespace

MessageRecord parseMessageRecord(const QByteArray &bytes)
{
    QByteArray b = bytes.left(MELD_SATZ_LAENGE);
    b.append(QByteArray(MELD_SATZ_LAENGE - b.size(), '\0'));
    MessageRecord s;
    s.Text = b.mid(0, MELD_TEXT_LAENGE);
    s.Aktiv = u8(b[40]);
    for (int k = 0; k < 4; ++k) {
        s.Reserve_A[k] = u8(b[41 + k]);
        s.Reserve_C[k] = u8(b[46 + k]);
    }
    s.Reserve_B = u8(b[45]);
    s.Kommt = readTime(b, 50);
    s.Geht = readTime(b, 56);
    return s;
}

QByteArray messageRecordBytes(const MessageRecord &satz)
{
    QByteArray b(MELD_SATZ_LAENGE, '\0');
    QByteArray text = satz.Text.left(MELD_TEXT_LAENGE);
    text.append(QByteArray(MELD_TEXT_LAENGE - text.size(), ' '));
    b.replace(0, MELD_TEXT_LAENGE, text);
    b[40] = char(satz.Aktiv);
    for (int k = 0; k < 4; ++k) {
        b[41 + k] = char(satz.Reserve_A[k]);
        b[46 + k] = char(satz.Reserve_C[k]);
    }
    b[45] = char(satz.Reserve_B);
    writeTime(b, 50, satz.Kommt);
    writeTime(b, 56, satz.Geht);
    return b;
}

int messageRecordNumber(int ofen, int n)
{
    if (ofen < 0 || ofen >= OFEN_MAX)
        raiseBounds("Meld_Satz", ofen);
    return ofen * 100 + n;
}

bool openMessageStore()
{
    closeMessageStore();
    datei = new QFile(QDir(plant.Pfad[0]).filePath(QStringLiteral("Kalmeron.mld")));
    zugriffe = {};
    if (!datei->open(QIODevice::ReadWrite)) {
        delete datei;
        datei = nullptr;
        return false;
    }
    return true;
}

void closeMessageStore()
{
    if (!datei)
        return;
    datei->close();
    delete datei;
    datei = nullptr;
}

bool messageStoreOpen()
{
    return datei != nullptr;
}

MessageRecord readMessage(int satzNr)
{
    ++zugriffe.lesen;
    QByteArray b;
    if (datei && satzNr >= 1 && datei->seek(qint64(satzNr - 1) * MELD_SATZ_LAENGE))
        b = datei->read(MELD_SATZ_LAENGE);
    return parseMessageRecord(b);
}

void writeMessage(int satzNr, const MessageRecord &satz)
{
    ++zugriffe.schreiben;
    if (!datei || satzNr < 1)
        return;
    const qint64 pos = qint64(satzNr - 1) * MELD_SATZ_LAENGE;
    const qint64 ende = datei->size();
    if (pos > ende) {
        // Records never written before this one read as zeros.
        datei->seek(ende);
        datei->write(QByteArray(pos - ende, '\0'));
    }
    datei->seek(pos);
    datei->write(messageRecordBytes(satz));
    // The store lives for the whole run: keep the disk current, so nothing
    // is lost when the station is stopped from outside.
    datei->flush();
}

StoreAccesses messageStoreAccesses()
{
    return zugriffe;
}

void MeldEintrag(int ofen, int meldung)
{
    const int n = meldung < 0 ? -meldung : meldung;
    if (n < 1 || n > MELD_PRO_OFEN)
        return;
    const QDateTime jetzt = now();
    const int satzNr = messageRecordNumber(ofen, n);
    MessageRecord s = readMessage(satzNr);
    if (meldung > 0 && s.Aktiv == 0) {
        s.Aktiv = 1;
        s.Kommt = timeOf(jetzt);
        writeMessage(satzNr, s);
    } else if (meldung < 0 && s.Aktiv != 0) {
        s.Aktiv = 0;
        s.Geht = timeOf(jetzt);
        writeMessage(satzNr, s);
    }
    messagesChanged();
}

void MeldText_Sichern(int ofen, int n, const QString &text)
{
    if (n >= 1 && n <= MELD_PRO_OFEN) {
        storeText(messageRecordNumber(ofen, n), textField(text.trimmed()));
    } else if (n == MELD_SATZ_SPUR) {
        QString spur;
        for (int k = 0; k < 4; ++k)
            spur += fixedWidth(plant.Spur(ofen, k), 8);
        storeText(messageRecordNumber(ofen, MELD_SATZ_SPUR), textField(spur));
        const QString titel = fixedWidth(plant.Spur_Titel(ofen, 0), 16) + fixedWidth(plant.Spur_Titel(ofen, 1), 16);
        storeText(messageRecordNumber(ofen, MELD_SATZ_SPUR_TITEL), textField(titel));
    }
}

void setMessageCount(int ofen)
{
    // The furnace's version word is its type word: the sign bit says that the
    // PLC has a layout (version) block at all, bit 12 marks the large layout,
    // which carries the third message word.
    const int typ = plant.Ofen_Typ[ofen + 1];
    plant.Meld_Anzahl[ofen] = (typ < 0 && (typ & 0x1000)) ? 48 : 32;
}

void loadMessageTexts()
{
    for (int ofen = 0; ofen < OFEN_MAX; ++ofen) {
        setMessageCount(ofen);
        for (int n = 1; n <= MELD_PRO_OFEN; ++n) {
            const MessageRecord s = readMessage(messageRecordNumber(ofen, n));
            plant.Meld_Text(ofen, n - 1) = fieldText(s.Text).left(MELD_TEXT_BREITE);
            if (s.Aktiv > 0) {
                const int w = (n - 1) / 16;
                const uint16_t maske = uint16_t(plant.Meld_Letzt(ofen, w)) | uint16_t(1u << ((n - 1) % 16));
                // Kept sign-extended from 16 bits, the form the scan stores.
                plant.Meld_Letzt(ofen, w) = int16_t(maske);
            }
        }
        const QByteArray spur = readMessage(messageRecordNumber(ofen, MELD_SATZ_SPUR)).Text;
        for (int k = 0; k < 4; ++k)
            plant.Spur(ofen, k) = fieldText(spur.mid(8 * k, 8));
        const QByteArray titel = readMessage(messageRecordNumber(ofen, MELD_SATZ_SPUR_TITEL)).Text;
        for (int k = 0; k < 2; ++k)
            plant.Spur_Titel(ofen, k) = fieldText(titel.mid(16 * k, 16));
    }
}

} // namespace kal
