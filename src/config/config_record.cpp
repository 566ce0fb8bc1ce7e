#include "config/config_record.h"

#include "core/conversions.h"

namespace kal {

QByteArray ConfigRecord::bytes() const
{
    QByteArray b;
    b.reserve(CONFIG_SATZ_LAENGE);
    for (u8 x : B)
        b.append(static_cast<char>(x));
    for (i16 w : W)
        b.append(MKI(w));
    b.append(TEXT.left(CONFIG_TEXT_LAENGE).leftJustified(CONFIG_TEXT_LAENGE, '\0'));
    return b;
}

ConfigRecord ConfigRecord::from(const QByteArray &raw)
{
    const QByteArray b = raw.left(CONFIG_SATZ_LAENGE).leftJustified(CONFIG_SATZ_LAENGE, '\0');
    ConfigRecord s;
    for (int i = 0; i < 4; ++i)
        s.B[i] = static_cast<u8>(b[i]);
    for (int i = 0; i < 5; ++i)
        s.W[i] = CVI(b.mid(4 + 2 * i, 2));
    s.TEXT = b.mid(14, CONFIG_TEXT_LAENGE);
    return s;
}

void ConfigRecord::putBytes(int pos, const QByteArray &bytes)
{
    for (int i = 0; i < bytes.size(); ++i) {
        const int at = pos - 1 + i;
        if (at < 0 || at >= CONFIG_TEXT_LAENGE)
            raiseBounds("TEXT", at + 1);
        TEXT[at] = bytes[i];
    }
}

void ConfigRecord::putText(int pos, int width, const QString &text)
{
    putBytes(pos, Latin1Bytes(fixedWidth(text, width)));
}

QByteArray ConfigRecord::rawText(int pos, int width) const
{
    return TEXT.mid(pos - 1, width);
}

QString ConfigRecord::text(int pos, int width) const
{
    return Text_Sauber(Latin1Text(rawText(pos, width)));
}

ConfigRecordFile::ConfigRecordFile(const QString &path, bool create)
    : file_(path)
{
    if (!create && !file_.exists())
        throw RunError(ERR_FILE, "file not found: " + path.toStdString());
    if (!file_.open(QIODevice::ReadWrite))
        throw RunError(ERR_FILE, "cannot open: " + path.toStdString());
}

int ConfigRecordFile::records() const
{
    return static_cast<int>(file_.size() / CONFIG_SATZ_LAENGE);
}

ConfigRecord ConfigRecordFile::read(int nr)
{
    if (nr < 1)
        raiseBounds("record", nr);
    const qint64 pos = qint64(nr - 1) * CONFIG_SATZ_LAENGE;
    if (pos >= file_.size())
        return ConfigRecord{};
    if (!file_.seek(pos))
        throw RunError(ERR_FILE, "seek failed");
    return ConfigRecord::from(file_.read(CONFIG_SATZ_LAENGE));
}

void ConfigRecordFile::write(int nr, const ConfigRecord &satz)
{
    if (nr < 1)
        raiseBounds("record", nr);
    const qint64 pos = qint64(nr - 1) * CONFIG_SATZ_LAENGE;
    // A record beyond the end leaves zero records in the gap, never whatever
    // the file system happens to hold there.
    if (pos > file_.size() && !file_.resize(pos))
        throw RunError(ERR_FILE, "resize failed");
    if (!file_.seek(pos) || file_.write(satz.bytes()) != CONFIG_SATZ_LAENGE)
        throw RunError(ERR_FILE, "write failed");
}

} // namespace kal
