// Names.
#include "engine/excel/blattname.h"

#include <QRegularExpression>
#include <QSet>
#include <algorithm>

namespace excel {
namespace {

constexpr QStringView kVerbotenImBlatt = u":\\/?*[]$";
constexpr QStringView kVerbotenImFeld = u".![]";
constexpr int kMaxBereichsname = 255;

bool istSteuerzeichen(QChar c) {
    return c < u' ';
}

// "A1", "IV65536", "R1C1", "R", "C", in German "Z1S1".
bool wieEineZelle(const QString& name) {
    static const QRegularExpression muster(
        QStringLiteral("^([A-Z]{1,3}[0-9]+|[RZ][0-9]*([CS][0-9]*)?|[CS][0-9]*)$"),
        QRegularExpression::CaseInsensitiveOption);
    return muster.match(name).hasMatch();
}

}  // namespace

bool blattnameErlaubt(const QString& name) {
    if (name.isEmpty() || name.size() > kMaxBlattname) return false;
    if (name.startsWith(u'\'') || name.endsWith(u'\'')) return false;
    if (name.compare(u"History", Qt::CaseInsensitive) == 0) return false;
    return std::none_of(name.begin(), name.end(),
                        [](QChar c) { return istSteuerzeichen(c) || kVerbotenImBlatt.contains(c); });
}

QString bereichsname(const QString& name) {
    QString ergebnis = name.left(kMaxBereichsname - 1);
    for (QChar& c : ergebnis)
        if (!c.isLetterOrNumber() && c != u'_' && c != u'.' && !c.isSurrogate()) c = u'_';
    const bool anfang = !ergebnis.isEmpty() && (ergebnis[0].isLetter() || ergebnis[0] == u'_');
    return !anfang || wieEineZelle(ergebnis) ? u'_' + ergebnis : ergebnis;
}

QString feldname(const QString& kopf) {
    QString name = kopf;
    name.replace(QStringLiteral("\r\n"), QStringLiteral("_"));
    for (QChar& c : name) {
        if (c == u'.') c = u'#';
        if (c == u'!' || istSteuerzeichen(c)) c = u'_';
        if (c == u'[') c = u'(';
        if (c == u']') c = u')';
    }
    name = name.left(kMaxFeldname);
    return std::all_of(name.begin(), name.end(), [](QChar c) { return c == u' '; }) ? QString() : name;
}

std::vector<QString> feldnamen(const std::vector<QString>& koepfe) {
    std::vector<QString> namen;
    QSet<QString> vergeben;
    for (size_t i = 0; i < koepfe.size(); ++i) {
        QString stamm = feldname(koepfe[i]);
        if (stamm.isEmpty()) stamm = QStringLiteral("F%1").arg(i + 1);
        QString name = stamm;
        for (int n = 1; vergeben.contains(name.toUpper()); ++n) {
            const QString zahl = QString::number(n);
            name = stamm.left(kMaxFeldname - zahl.size()) + zahl;
        }
        vergeben.insert(name.toUpper());
        namen.push_back(name);
    }
    return namen;
}

bool feldnameErlaubt(const QString& name) {
    return !name.isEmpty() && name.size() <= kMaxFeldname &&
           std::none_of(name.begin(), name.end(),
                        [](QChar c) { return istSteuerzeichen(c) || kVerbotenImFeld.contains(c); });
}

}  // namespace excel
