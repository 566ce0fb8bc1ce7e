#include "recording/element_file.h"

#include "config/paths.h"
#include "core/conversions.h"
#include "recording/batch_file.h"

#include <QFile>
#include <QtEndian>
#include <cmath>
#include <cstring>

namespace kal {

namespace {

constexpr int ZEIT_LAENGE = 19;
constexpr int RX_OFFSET = 21;

[[noreturn]] void raiseFile(const QFile &f)
{
    throw RunError(ERR_FILE, "element file: " + f.fileName().toStdString() + ": " + f.errorString().toStdString());
}

} // namespace

QByteArray packElementRecord(const ElementRecord &s)
{
    QByteArray b(ELEMENT_SATZ, '\0');
    qToLittleEndian<qint16>(s.Anzahl, b.data());
    const QByteArray zeit = Latin1Bytes(fixedWidth(s.Zeit, ZEIT_LAENGE));
    std::memcpy(b.data() + 2, zeit.constData(), ZEIT_LAENGE);
    for (int e = 0; e < ELEMENTE; ++e) {
        uint32_t bits;
        std::memcpy(&bits, &s.RX[e], 4);
        qToLittleEndian<quint32>(bits, b.data() + RX_OFFSET + 4 * e);
    }
    return b;
}

ElementRecord unpackElementRecord(const QByteArray &bytes)
{
    QByteArray b = bytes.left(ELEMENT_SATZ);
    b.append(QByteArray(ELEMENT_SATZ - b.size(), '\0'));
    ElementRecord s;
    s.Anzahl = qFromLittleEndian<qint16>(b.constData());
    s.Zeit = Latin1Text(b.mid(2, ZEIT_LAENGE));
    for (int e = 0; e < ELEMENTE; ++e) {
        const uint32_t bits = qFromLittleEndian<quint32>(b.constData() + RX_OFFSET + 4 * e);
        std::memcpy(&s.RX[e], &bits, 4);
    }
    return s;
}

QString elFilePath(int ofenNr)
{
    return dataFile(QStringLiteral("KM_EL%1.DAT").arg(ofenNr));
}

QString rxFilePath(int ofenNr)
{
    return dataFile(QStringLiteral("KM_RX%1.DAT").arg(ofenNr));
}

int elementRecordCount(const QString &pfad)
{
    return recordCountOfLength(QFile(pfad).size(), ELEMENT_SATZ);
}

ElementRecord readElement(const QString &pfad, int nr)
{
    QFile f(pfad);
    if (nr < 1 || !f.open(QIODevice::ReadOnly) || !f.seek(qint64(nr - 1) * ELEMENT_SATZ))
        return ElementRecord{};
    return unpackElementRecord(f.read(ELEMENT_SATZ));
}

void writeElement(const QString &pfad, int nr, const ElementRecord &s)
{
    if (nr < 1)
        throw RunError(ERR_SUBSCRIPT, "element record number");
    QFile f(pfad);
    if (!f.open(QIODevice::ReadWrite))
        raiseFile(f);
    const qint64 at = qint64(nr - 1) * ELEMENT_SATZ;
    QByteArray bytes;
    qint64 von = at;
    if (at > f.size()) {
        bytes = QByteArray(at - f.size(), '\0');
        von = f.size();
    }
    bytes += packElementRecord(s);
    if (!f.seek(von) || f.write(bytes) != bytes.size())
        raiseFile(f);
}

} // namespace kal
