#include "recording/usb_source.h"

#include "core/conversions.h"
#include "recording/batch_file.h"

#include <QDir>
#include <QtEndian>

namespace kal {

bool usbNameValid(const QString &name)
{
    switch (name.size()) {
    case 2:
        return true;
    case 6:
        return name.endsWith(QLatin1String(".DAT")) || name.endsWith(QLatin1String(".dat"));
    case 8:
    case 10:
        return name.endsWith(QLatin1String(".usb")) || name.endsWith(QLatin1String(".USB"));
    default:
        return false;
    }
}

QStringList usbSources(const QString &ordner)
{
    if (ordner.isEmpty())
        return {};
    return QDir(ordner).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase);
}

UsbDate readUsbDate(i16 w1, i16 w2)
{
    const auto a = static_cast<uint16_t>(w1);
    const auto b = static_cast<uint16_t>(w2);
    UsbDate d;
    d.zeit.Tag = u8((a >> 11) & 0x1F);
    d.zeit.Monat = u8((a >> 7) & 0x0F);
    d.zeit.Jahr = u8(a & 0x7F);
    d.zeit.Stunde = u8((b >> 11) & 0x1F);
    d.zeit.Minute = u8((b >> 5) & 0x3F);
    d.zeit.Sekunde = u8((b & 0x1F) * 2);
    const RecordTime &z = d.zeit;
    d.ok = z.Jahr >= 6 && z.Monat >= 1 && z.Monat <= 12 && z.Tag >= 1 && z.Tag <= 31 && z.Stunde <= 23 &&
           z.Minute <= 59;
    return d;
}

bool UsbSource::open(const QString &pfad, int laenge)
{
    close();
    laenge_ = laenge;
    file_.setFileName(pfad);
    // A folder opens as a device on some systems: only a real file counts.
    return QFileInfo(pfad).isFile() && file_.open(QIODevice::ReadOnly);
}

void UsbSource::close()
{
    if (file_.isOpen())
        file_.close();
}

int UsbSource::count() const
{
    if (!file_.isOpen() || laenge_ <= 0)
        return 0;
    return recordCountOfLength(file_.size(), laenge_);
}

std::vector<i16> UsbSource::read(int nr)
{
    std::vector<i16> w(std::max(laenge_ / 2, 0), 0);
    if (nr < 1 || !file_.isOpen() || !file_.seek(qint64(nr - 1) * laenge_))
        return w;
    const QByteArray b = file_.read(laenge_);
    for (int i = 0; i + 1 < b.size() && i / 2 < int(w.size()); i += 2)
        w[i / 2] = qFromLittleEndian<qint16>(b.constData() + i);
    return w;
}

QString USB_Text(const std::vector<i16> &w, int von, int n)
{
    QByteArray b;
    for (int i = von; i < von + n; ++i)
        b += MKI(i >= 0 && i < int(w.size()) ? w[i] : i16(0));
    return Latin1Text(b);
}

} // namespace kal
