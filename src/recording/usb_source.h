#pragma once
// Source files of the USB import: what a furnace panel wrote to a USB stick,
// copied by hand into the USB folder.
//
// A source is an array of records of little-endian words. Record 1 is the
// header: h0 = 999 marks the file, h1 + 1 is the record count, h2 the form
// (20, 60 or 80 = record length in bytes), h4..h9 the serial (12 characters,
// two a word, first in the low byte), h10..h17 the furnace name; in form 80
// h18..h39 hold the identity pairs 0..10 (first and second word alternating).
//
// Date words of a data record: w1 = day (bits 11..15), month (7..10), year
// minus 2000 (0..6); w2 = hour (11..15), minute (5..10), second / 2 (0..4).

#include "recording/batch_record.h"

#include <QFile>
#include <QString>
#include <QStringList>
#include <vector>

namespace kal {

constexpr i16 USB_MARKE = 999;   ///< h0 of a source

/// A name qualifies by its length: 2 characters always; 6 only ending in
/// ".DAT" or ".dat"; 8 or 10 only ending in ".usb" or ".USB".
bool usbNameValid(const QString &name);

/// The sorted names of the files in the folder (no folders), case ignored.
QStringList usbSources(const QString &ordner);

/// The date of a data record, and whether it passes the import's test (year
/// at least 6, month 1..12, day 1..31, hour up to 23, minute up to 59).
struct UsbDate {
    bool ok = false;
    RecordTime zeit;   ///< Jahr is the year minus 2000
};
UsbDate readUsbDate(i16 w1, i16 w2);

/// The source file open for reading, with a fixed record length.
class UsbSource {
public:
    /// Opens (or reopens) with record length `laenge`; false when the file
    /// can't be read as a file.
    bool open(const QString &pfad, int laenge);
    void close();
    bool isOpen() const { return file_.isOpen(); }
    /// Length / record length, rounded to the nearest whole number (ties to even).
    int count() const;
    /// Record `nr` (from 1) as laenge / 2 words; missing bytes read as 0.
    std::vector<i16> read(int nr);

private:
    QFile file_;
    int laenge_ = 0;
};

/// Text of `n` words from w[von] on, two characters a word, low byte first.
QString USB_Text(const std::vector<i16> &w, int von, int n);

} // namespace kal
