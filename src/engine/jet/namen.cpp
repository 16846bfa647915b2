// Names: rules and bytes.
#include "engine/jet/namen.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/jet/seiten.h"

namespace jet {
namespace {

constexpr QStringView kNirgends = u"!.[]`";
constexpr QStringView kNichtInTabellen = u"'\"";

}  // namespace

QByteArray namenBytes(const Format& format, const QString& name) {
    if (format.jet4) return QByteArray(reinterpret_cast<const char*>(name.utf16()), name.size() * 2);
    bool ok = true;
    const QByteArray bytes = text1252(name, &ok);
    if (!ok)
        throw EngineFehler(kUngueltigerName,
                           u"Der Name '%1' enthält Zeichen, die es in einer Datenbank von Access 97 "
                           "nicht gibt. Wählen Sie einen anderen Namen."_qs.arg(name));
    return bytes;
}

bool feldNameErlaubt(const QString& name) {
    if (name.isEmpty() || name.size() > kMaxName || name.front() == u' ') return false;
    return std::none_of(name.begin(), name.end(), [](QChar c) { return c < u' ' || kNirgends.contains(c); });
}

bool tabellenNameErlaubt(const QString& name) {
    return feldNameErlaubt(name) && name.front() != QChar(QChar::ByteOrderMark) &&
           std::none_of(name.begin(), name.end(), [](QChar c) { return kNichtInTabellen.contains(c); });
}

}  // namespace jet
