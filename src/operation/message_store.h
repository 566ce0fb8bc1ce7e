#pragma once
// The message store "Kalmeron.mld": the come-and-go record of every PLC
// message of every furnace, and the plant's message texts and track names.
//
// A random-access file of 62-byte records, numbered from 1; the record of
// message n (1..48) of furnace index f is f * 100 + n. Records f * 100 + 97 and
// f * 100 + 98 hold the track names. The file is opened once at start-up and
// stays open for the whole run; a record that was never written reads as zeros,
// that is as a gone message with an empty text.
//
// Record layout, all integers little-endian, texts Latin-1 and blank-padded:
//   0  40  Text            message text (records 97 and 98: the names)
//  40   1  Aktiv           0 gone, 1 active
//  41   4  reserved        }
//  45   1  reserved        } kept exactly as read
//  46   4  reserved        }
//  50   6  Kommt           day, month, year - 2000, hour, minute, second
//  56   6  Geht            the same at going

#include "core/plant_state.h"

#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>

namespace kal {

constexpr int MELD_SATZ_LAENGE = 62;
constexpr int MELD_TEXT_LAENGE = 40;
constexpr int MELD_SATZ_SPUR = 97;        ///< record of the four 8-character track names
constexpr int MELD_SATZ_SPUR_TITEL = 98;  ///< record of the two 16-character names
constexpr int MELD_TEXT_BREITE = 22;      ///< width of Meld_Text

/// A moment of a message, as the six bytes of the record hold it.
struct MessageTime {
    u8 Tag = 0;
    u8 Monat = 0;
    u8 Jahr = 0;  ///< year - 2000
    u8 Stunde = 0;
    u8 Minute = 0;
    u8 Sekunde = 0;
};

/// One record of the store.
struct MessageRecord {
    QByteArray Text = QByteArray(MELD_TEXT_LAENGE, '\0'); ///< 40 bytes as stored
    u8 Aktiv = 0;
    std::array<u8, 4> Reserve_A{};  ///< offset 41
    u8 Reserve_B = 0;               ///< offset 45
    std::array<u8, 4> Reserve_C{};  ///< offset 46
    MessageTime Kommt;
    MessageTime Geht;
};

/// Field by field from 62 bytes; a shorter buffer reads as if padded with zeros.
MessageRecord parseMessageRecord(const QByteArray &bytes);
/// Field by field into exactly 62 bytes.
QByteArray messageRecordBytes(const MessageRecord &satz);

/// Record number of message n (or 97, 98) of furnace index `ofen`.
int messageRecordNumber(int ofen, int n);

/// Opens `Pfad`[0] + "Kalmeron.mld" (created when missing) for the run.
/// False when it cannot be opened: then reads give zeros and writes are lost.
bool openMessageStore();
/// Closes the store (shutdown, `Programm_Ende`).
void closeMessageStore();
bool messageStoreOpen();

/// Reads record `satzNr` (from 1). Past the end of the file, or with the store
/// closed, the record reads as zeros; a cut last record is padded with zeros.
MessageRecord readMessage(int satzNr);
/// Writes record `satzNr`; a gap before it is filled with zero records.
void writeMessage(int satzNr, const MessageRecord &satz);

/// Counts of record reads and writes since the store was opened. The main
/// cycle's message scan must not touch the file for words that did not change;
/// these counts make that visible.
struct StoreAccesses {
    int64_t lesen = 0;
    int64_t schreiben = 0;
};
StoreAccesses messageStoreAccesses();

/// `MeldEintrag(furnace index, ±n)`: message n came (+n) or went (-n).
/// A come on a gone message stores `Aktiv` 1 and the come time, a go on an
/// active message `Aktiv` 0 and the go time, both from the station's clock;
/// anything else leaves the file alone. n outside 1..48 is ignored. Then the
/// message form, when shown, is told to redraw.
void MeldEintrag(int ofen, int meldung);

/// `MeldText_Sichern(furnace index, n, text)`: n 1..48 stores the trimmed text
/// in the message's record, only when it differs, keeping the other fields.
/// n = 97 stores the furnace's track names `Spur` (record 97) and `Spur_Titel`
/// (record 98), each only when it differs; `text` is not used then.
void MeldText_Sichern(int ofen, int n, const QString &text);

/// `Meld_Anzahl` of a furnace index from its type word: 48 when it has a
/// version word (sign bit) with bit 12, else 32.
void setMessageCount(int ofen);

/// Start-up: for every furnace sets `Meld_Anzahl`, reads messages 1..48 into
/// `Meld_Text` (trimmed, 22 characters), sets the bit of every active message
/// in `Meld_Letzt` so it does not come again, and reads records 97 and 98 into
/// `Spur` and `Spur_Titel`.
void loadMessageTexts();

} // namespace kal
