// Reads a plant description from JSON. The form, with every key optional but
// "furnaces", "number" and "address" (unknown keys are refused, so that a typing
// error doesn't pass unnoticed):
//
// { "udpPort": 1024, "modbusPort": 502, "panel": "127.0.0.20",
//   "furnaces": [
//     { "number": 1, "address": "127.0.0.11", "protocol": "udp" | "modbus",
//       "layout": "plain" | "headed", "base": 240, "large": false, "type": 3,
//       "name": "Kammerofen 1", "serial": "1203-017-KHP", "version": "01",
//       "identity": [24 words], "values216": [a, b, c], "trackCode": 612, "elementValue": 0,
//       "maxTemp": 1200, "overTempMessage": 2, "panelCode": 80 or "0x50",
//       "clockOffset": 0, "sampleSeconds": 10, "elementEvery": 6, "firstBatch": 1, "hours": 0,
//       "program": { "name": "Anlassen 550", "segments": [[1, 550, 3000, 100], [2, 0, 5, 100]] },
//       "places": [ program, ... ], "autoStart": true, "pause": 300,
//       "messageTexts": [...], "trackNames": [...], "pageNames": [...], "codes": [...],
//       "messageConfig": true, "stop": [2], "n2": [], "sms": [1, 2] } ],
//   "events": [ { "at": 60, "furnace": 1 or "panel", "do": "raise" | "clear" | "acknowledge" |
//                 "start" | "stop" | "drop" | "resume", "message": 1 } ],
//   "eventPeriod": 600 }
//
// A segment is [command, target °C, value, limit]: value is the rate in 0.1 K/h,
// the hold time in 0.1 h or the repeat count; limit the output in % or the
// target segment of a cycle. Times ("at", "eventPeriod", "pause",
// "clockOffset") are seconds.

#include "sim/plant_description.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace kal::sim {

namespace {

struct Failed {
    QString why;
};

[[noreturn]] void fail(const QString &where, const QString &why)
{
    throw Failed{where + QStringLiteral(": ") + why};
}

void onlyKeys(const QJsonObject &o, const QString &where, std::initializer_list<const char *> keys)
{
    QSet<QString> known;
    for (const char *k : keys)
        known.insert(QString::fromLatin1(k));
    for (auto it = o.begin(); it != o.end(); ++it)
        if (!known.contains(it.key()))
            fail(where, QStringLiteral("unknown key \"%1\"").arg(it.key()));
}

int integer(const QJsonValue &v, const QString &where, int lo, int hi)
{
    double d = 0;
    if (v.isString() && v.toString().startsWith(QLatin1String("0x"))) {
        bool ok = false;
        d = v.toString().mid(2).toInt(&ok, 16);
        if (!ok)
            fail(where, QStringLiteral("\"%1\" is no number").arg(v.toString()));
    } else if (v.isDouble()) {
        d = v.toDouble();
    } else {
        fail(where, QStringLiteral("a number is expected"));
    }
    if (d != double(int64_t(d)) || d < lo || d > hi)
        fail(where, QStringLiteral("%1 is not a whole number in %2..%3").arg(d).arg(lo).arg(hi));
    return int(d);
}

int integer(const QJsonObject &o, const char *key, const QString &where, int def, int lo, int hi)
{
    const QJsonValue v = o.value(QLatin1String(key));
    return v.isUndefined() ? def : integer(v, where + QLatin1Char('.') + QLatin1String(key), lo, hi);
}

QString text(const QJsonObject &o, const char *key, const QString &where, const QString &def = {})
{
    const QJsonValue v = o.value(QLatin1String(key));
    if (v.isUndefined())
        return def;
    if (!v.isString())
        fail(where + QLatin1Char('.') + QLatin1String(key), QStringLiteral("a text is expected"));
    return v.toString();
}

bool flag(const QJsonObject &o, const char *key, const QString &where, bool def)
{
    const QJsonValue v = o.value(QLatin1String(key));
    if (v.isUndefined())
        return def;
    if (!v.isBool())
        fail(where + QLatin1Char('.') + QLatin1String(key), QStringLiteral("true or false is expected"));
    return v.toBool();
}

QJsonArray array(const QJsonObject &o, const char *key, const QString &where)
{
    const QJsonValue v = o.value(QLatin1String(key));
    if (v.isUndefined())
        return {};
    if (!v.isArray())
        fail(where + QLatin1Char('.') + QLatin1String(key), QStringLiteral("a list is expected"));
    return v.toArray();
}

QVector<int> integers(const QJsonObject &o, const char *key, const QString &where, int lo, int hi)
{
    QVector<int> out;
    const QJsonArray a = array(o, key, where);
    for (int i = 0; i < a.size(); ++i)
        out.append(integer(a[i], QStringLiteral("%1.%2[%3]").arg(where, QLatin1String(key)).arg(i), lo, hi));
    return out;
}

QVector<int16_t> words(const QJsonObject &o, const char *key, const QString &where)
{
    QVector<int16_t> out;
    for (int v : integers(o, key, where, -32768, 65535))
        out.append(static_cast<int16_t>(v));
    return out;
}

QStringList texts(const QJsonObject &o, const char *key, const QString &where)
{
    QStringList out;
    const QJsonArray a = array(o, key, where);
    for (int i = 0; i < a.size(); ++i) {
        if (!a[i].isString())
            fail(QStringLiteral("%1.%2[%3]").arg(where, QLatin1String(key)).arg(i), QStringLiteral("a text is expected"));
        out.append(a[i].toString());
    }
    return out;
}

ProgramDescription program(const QJsonValue &v, const QString &where)
{
    if (!v.isObject())
        fail(where, QStringLiteral("a program object is expected"));
    const QJsonObject o = v.toObject();
    onlyKeys(o, where, {"name", "segments"});
    ProgramDescription p;
    p.name = text(o, "name", where);
    const QJsonArray segs = array(o, "segments", where);
    if (segs.size() > 20)
        fail(where, QStringLiteral("at most 20 segments"));
    for (int k = 0; k < segs.size(); ++k) {
        const QString at = QStringLiteral("%1.segments[%2]").arg(where).arg(k);
        const QJsonArray s = segs[k].toArray();
        if (!segs[k].isArray() || s.size() != 4)
            fail(at, QStringLiteral("[command, target, value, limit] is expected"));
        SegmentDescription d;
        d.befehl = integer(s[0], at, 0, 15);
        d.sollwert = integer(s[1], at, -32768, 32767);
        d.wert = integer(s[2], at, -32768, 32767);
        d.grenze = integer(s[3], at, 0, 65535);
        p.segments.append(d);
    }
    return p;
}

FurnaceDescription furnace(const QJsonValue &v, int i)
{
    const QString where = QStringLiteral("furnaces[%1]").arg(i);
    if (!v.isObject())
        fail(where, QStringLiteral("a furnace object is expected"));
    const QJsonObject o = v.toObject();
    onlyKeys(o, where,
             {"number", "address", "protocol", "layout", "base", "large", "type", "name", "serial", "version",
              "identity", "values216", "trackCode", "elementValue", "maxTemp", "overTempMessage", "panelCode",
              "clockOffset", "sampleSeconds", "elementEvery", "firstBatch", "hours", "program", "places", "autoStart", "pause",
              "messageTexts", "trackNames", "pageNames", "codes", "messageConfig", "stop", "n2", "sms"});
    FurnaceDescription f;
    if (!o.contains(QLatin1String("number")) || !o.contains(QLatin1String("address")))
        fail(where, QStringLiteral("\"number\" and \"address\" are needed"));
    f.index = integer(o, "number", where, 1, 1, 8) - 1;
    f.address = text(o, "address", where);
    const QString protocol = text(o, "protocol", where, QStringLiteral("udp"));
    if (protocol != QLatin1String("udp") && protocol != QLatin1String("modbus"))
        fail(where + QStringLiteral(".protocol"), QStringLiteral("\"udp\" or \"modbus\" is expected"));
    f.protocol = protocol == QLatin1String("udp") ? Protocol::MemoryLink : Protocol::Modbus;
    const QString layout = text(o, "layout", where, QStringLiteral("plain"));
    if (layout != QLatin1String("plain") && layout != QLatin1String("headed"))
        fail(where + QStringLiteral(".layout"), QStringLiteral("\"plain\" or \"headed\" is expected"));
    f.headed = layout == QLatin1String("headed");
    f.base = integer(o, "base", where, f.headed ? (f.protocol == Protocol::MemoryLink ? 240 : 500) : 0, 0, 4095);
    f.large = flag(o, "large", where, false);
    f.plainType = integer(o, "type", where, f.plainType, 0, 6);
    f.name = text(o, "name", where, QStringLiteral("Ofen %1").arg(f.index + 1));
    f.serial = text(o, "serial", where, QStringLiteral("1201-%1-SIM").arg(f.index + 1, 3, 10, QLatin1Char('0')));
    f.version = text(o, "version", where, f.version);
    f.identity = words(o, "identity", where);
    const QVector<int16_t> v216 = words(o, "values216", where);
    for (int k = 0; k < 3 && k < v216.size(); ++k)
        f.values216[size_t(k)] = v216[k];
    f.trackCode = int16_t(integer(o, "trackCode", where, 0, 0, 32767));
    f.elementValue = int16_t(integer(o, "elementValue", where, 0, -32768, 32767));
    f.maxTemp = integer(o, "maxTemp", where, f.maxTemp, 50, 3000);
    f.overTempMessage = integer(o, "overTempMessage", where, f.overTempMessage, 0, 48);
    f.panelCode = integer(o, "panelCode", where, 0, 0, 255);
    f.clockOffsetSeconds = integer(o, "clockOffset", where, 0, -400000000, 400000000);
    f.sampleSeconds = integer(o, "sampleSeconds", where, f.sampleSeconds, 1, 86400);
    f.elementEvery = integer(o, "elementEvery", where, f.elementEvery, 1, 1000);
    f.firstBatch = integer(o, "firstBatch", where, 1, 1, 32000);
    f.hours = uint32_t(integer(o, "hours", where, 0, 0, 2000000000));
    if (o.contains(QLatin1String("program")))
        f.program = program(o.value(QLatin1String("program")), where + QStringLiteral(".program"));
    const QJsonArray places = array(o, "places", where);
    for (int k = 0; k < places.size(); ++k)
        f.places.append(program(places[k], QStringLiteral("%1.places[%2]").arg(where).arg(k)));
    f.autoStart = flag(o, "autoStart", where, false);
    f.pauseSeconds = integer(o, "pause", where, f.pauseSeconds, 0, 86400 * 365);
    f.messageTexts = texts(o, "messageTexts", where);
    f.trackNames = texts(o, "trackNames", where);
    f.pageNames = texts(o, "pageNames", where);
    f.codes = words(o, "codes", where);
    f.messageConfig = flag(o, "messageConfig", where, true);
    f.stopMessages = integers(o, "stop", where, 1, 48);
    f.n2Messages = integers(o, "n2", where, 1, 48);
    f.smsMessages = integers(o, "sms", where, 1, 48);
    return f;
}

ScenarioEvent event(const QJsonValue &v, int i)
{
    const QString where = QStringLiteral("events[%1]").arg(i);
    if (!v.isObject())
        fail(where, QStringLiteral("an event object is expected"));
    const QJsonObject o = v.toObject();
    onlyKeys(o, where, {"at", "furnace", "do", "message"});
    ScenarioEvent e;
    e.atMs = int64_t(integer(o, "at", where, 0, 0, 400000000)) * 1000;
    const QJsonValue who = o.value(QLatin1String("furnace"));
    e.furnace = who.toString() == QLatin1String("panel") ? -1 : integer(who, where + QStringLiteral(".furnace"), 1, 8) - 1;
    static const QHash<QString, ScenarioEvent::Action> actions = {
        {QStringLiteral("raise"), ScenarioEvent::Raise},   {QStringLiteral("clear"), ScenarioEvent::Clear},
        {QStringLiteral("acknowledge"), ScenarioEvent::Acknowledge},
        {QStringLiteral("start"), ScenarioEvent::Start},   {QStringLiteral("stop"), ScenarioEvent::Stop},
        {QStringLiteral("drop"), ScenarioEvent::DropLink}, {QStringLiteral("resume"), ScenarioEvent::Resume},
    };
    const QString what = text(o, "do", where);
    if (!actions.contains(what))
        fail(where + QStringLiteral(".do"), QStringLiteral("\"%1\" is no action").arg(what));
    e.action = actions.value(what);
    e.message = integer(o, "message", where, 0, 0, 48);
    if ((e.action == ScenarioEvent::Raise || e.action == ScenarioEvent::Clear) && e.message == 0)
        fail(where, QStringLiteral("\"message\" 1..48 is needed"));
    if (e.furnace < 0 && e.action != ScenarioEvent::DropLink && e.action != ScenarioEvent::Resume)
        fail(where, QStringLiteral("the panel server only drops and resumes its link"));
    return e;
}

} // namespace

std::optional<PlantDescription> parsePlantDescription(const QByteArray &json, QString *error)
{
    QJsonParseError pe;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &pe);
    try {
        if (pe.error != QJsonParseError::NoError)
            fail(QStringLiteral("JSON"), pe.errorString() + QStringLiteral(" at offset %1").arg(pe.offset));
        if (!doc.isObject())
            fail(QStringLiteral("plant"), QStringLiteral("an object is expected"));
        const QJsonObject o = doc.object();
        onlyKeys(o, QStringLiteral("plant"), {"udpPort", "modbusPort", "panel", "furnaces", "events", "eventPeriod"});
        PlantDescription plant;
        plant.udpPort = integer(o, "udpPort", QStringLiteral("plant"), plant.udpPort, 0, 65535);
        plant.modbusPort = integer(o, "modbusPort", QStringLiteral("plant"), plant.modbusPort, 0, 65535);
        plant.panelAddress = text(o, "panel", QStringLiteral("plant"));
        const QJsonArray furnaces = array(o, "furnaces", QStringLiteral("plant"));
        if (furnaces.isEmpty())
            fail(QStringLiteral("plant"), QStringLiteral("no furnaces"));
        for (int i = 0; i < furnaces.size(); ++i)
            plant.furnaces.append(furnace(furnaces[i], i));
        const QJsonArray events = array(o, "events", QStringLiteral("plant"));
        for (int i = 0; i < events.size(); ++i)
            plant.events.append(event(events[i], i));
        plant.eventPeriodMs = int64_t(integer(o, "eventPeriod", QStringLiteral("plant"), 0, 0, 400000000)) * 1000;
        const QString bad = checkPlantDescription(plant);
        if (!bad.isEmpty())
            fail(QStringLiteral("plant"), bad);
        for (const auto &e : plant.events)
            if (e.furnace >= 0 && !plant.furnace(e.furnace))
                fail(QStringLiteral("events"), QStringLiteral("furnace %1 is not described").arg(e.furnace + 1));
        return plant;
    } catch (const Failed &f) {
        if (error)
            *error = f.why;
        return std::nullopt;
    }
}

} // namespace kal::sim
