// Names of tables and fields.
#include "engine/dbase/namen.h"

#include <algorithm>

namespace dbase {
namespace {

// Means something to a file system or to dBase.
constexpr QStringView kVerboten = u":/\\*?[]\"<>|.";
constexpr qsizetype kStammMitNummer = 7;  // room for "_99"
constexpr int kMaxNummer = 99;

bool istGeraetename(const QString& name) {
    static const QString kGeraete[] = {QStringLiteral("CON"), QStringLiteral("PRN"), QStringLiteral("AUX"),
                                       QStringLiteral("NUL")};
    const QString gross = name.toUpper();
    if (std::find(std::begin(kGeraete), std::end(kGeraete), gross) != std::end(kGeraete)) return true;
    return gross.size() == 4 && (gross.startsWith(u"COM") || gross.startsWith(u"LPT")) && gross[3] >= u'1' &&
           gross[3] <= u'9';
}

bool enthaelt(const std::vector<QString>& namen, const QString& name) {
    return std::any_of(namen.begin(), namen.end(),
                       [&](const QString& n) { return n.compare(name, Qt::CaseInsensitive) == 0; });
}

// The name itself, or its beginning with a number that nobody has.
QString verschieden(const QString& name, const std::vector<QString>& vorhandene) {
    if (!enthaelt(vorhandene, name)) return name;
    for (int i = 1;; ++i) {
        const QString nummer = QStringLiteral("_%1").arg(i);
        const qsizetype stamm = i <= kMaxNummer
                                    ? std::min<qsizetype>(kMaxFeldname - nummer.size(), name.size())
                                    : std::min<qsizetype>(kStammMitNummer - 2, name.size());
        const QString neu = name.left(stamm) + nummer;
        if (!enthaelt(vorhandene, neu)) return neu;
    }
}

QChar grossAlsFeldname(QChar c) {
    if (c >= u'a' && c <= u'z') return QChar(c.unicode() - u'a' + u'A');
    switch (c.unicode()) {
        case u'ä':
            return u'Ä';
        case u'ö':
            return u'Ö';
        case u'ü':
            return u'Ü';
        default:
            return c;
    }
}

bool istFeldbuchstabe(QChar c) {
    return (c >= u'A' && c <= u'Z') || QStringView(u"ÄÖÜß").contains(c);
}

}  // namespace

bool tabellennameErlaubt(const QString& name) {
    if (name.isEmpty() || name.size() > kMaxTabellenname) return false;
    if (name.front() == u' ' || name.back() == u' ' || istGeraetename(name)) return false;
    return std::none_of(name.begin(), name.end(), [](QChar c) {
        return c < u' ' || c == QChar(0x7F) || c.isSurrogate() || kVerboten.contains(c);
    });
}

QString lesbarerFeldname(const QString& roh, const std::vector<QString>& vorhandene) {
    QString name = roh;
    while (name.endsWith(u' ')) name.chop(1);
    for (QChar& c : name)
        if (c < u' ') c = u'_';
    if (name.isEmpty()) name = QStringLiteral("FELD%1").arg(vorhandene.size() + 1);
    return verschieden(name, vorhandene);
}

QString neuerFeldname(const QString& wunsch, const Zeichensatz& zeichensatz,
                      const std::vector<QString>& vorhandene) {
    QString name;
    for (const QChar roh : wunsch) {
        const QChar c = grossAlsFeldname(roh);
        char byte = 0;
        const bool passt = (istFeldbuchstabe(c) || c == u'_' || (c >= u'0' && c <= u'9')) &&
                           zeichensatz.schreiben(QStringView(&c, 1), &byte) < 0;
        name += passt ? c : QChar(u'_');
    }
    if (name.isEmpty() || !istFeldbuchstabe(name.front())) name.prepend(u'F');
    return verschieden(name.left(kMaxFeldname), vorhandene);
}

}  // namespace dbase
