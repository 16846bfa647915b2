// The name of the target table.
#include "data/zielname.h"

#include <algorithm>

#include "base/text.h"
#include "data/datenzugriff.h"

namespace {

struct Namensregel {
    qsizetype laenge;
    QStringView verboten;
    const char16_t* meldung;
};

constexpr Namensregel kDbase = {8, u":/\\*?[]",
                                u"Der Name enthält ungültige Zeichen ( / \\ ? : [ ] * ) für die Bezeichnung\r"
                                u"einer dBase-Datenbank, oder ist länger als 8 Zeichen oder leer."};
constexpr Namensregel kExcel = {
    31, u":/\\*?[]$",
    u"Der Name enthält ungültige Zeichen ( / \\ ? : [ ] * $ ) für die Bezeichnung\r"
    u"eines Excel-Tabellenblattes, oder ist länger als 31 Zeichen oder leer."};
constexpr Namensregel kAccess = {64, u"!.[]'\"",
                                 u"Der Name enthält ungültige Zeichen ( ! . [ ] ' \" ) für die Bezeichnung\r"
                                 u"einer Access-Datenbanktabelle, oder ist länger als 64 Zeichen oder leer."};

const Namensregel& regelFuer(const QString& format) {
    if (format == kFormatDbase3 || format == kFormatDbase4 || format == kFormatDbase5) return kDbase;
    return format == kFormatExcel5 ? kExcel : kAccess;
}

QString stammVon(const QString& tabelle) {
    const QString ohneDollar = TextEntfernen(tabelle, QStringLiteral("$"));
    return ohneDollar.left(ohneDollar.indexOf(u" _#"));
}

bool enthaelt(const QStringList& namen, const QString& gesucht) {
    const QString gefaltet = Grossschrift(Wert(gesucht));
    return std::any_of(namen.begin(), namen.end(),
                       [&](const QString& name) { return Grossschrift(Wert(name)) == gefaltet; });
}

}  // namespace

QString ZielnameBilden(const QString& tabelle, const QStringList& vorhandene, const QDate& datum) {
    const QString stamm = stammVon(tabelle);
    const QString tag = datum.toString(QStringLiteral("'__'d'_'M'_'yyyy"));
    for (int zaehler = 1;; ++zaehler) {
        const QString name = stamm + QStringLiteral(" _#") + QString::number(zaehler) + tag;
        if (!enthaelt(vorhandene, name)) return name;
    }
}

std::optional<QString> KurzerZielname(const QString& format, const QString& tabelle,
                                      const QStringList& vorhandene) {
    if (&regelFuer(format) != &kDbase) return std::nullopt;
    QString stamm = stammVon(tabelle);
    stamm.removeIf([](QChar c) { return !c.isLetterOrNumber() && c != u'_'; });
    for (int zaehler = 1;; ++zaehler) {
        const QString ende = u'_' + QString::number(zaehler);
        const QString name = stamm.left(kDbase.laenge - ende.size()) + ende;
        if (!enthaelt(vorhandene, name)) return name;
    }
}

std::optional<QString> ZielnamePruefen(const QString& format, const QString& name) {
    const Namensregel& regel = regelFuer(format);
    const QString getrimmt = Trim(name);
    const bool passt =
        !getrimmt.isEmpty() && getrimmt.size() <= regel.laenge &&
        std::none_of(getrimmt.begin(), getrimmt.end(), [&](QChar c) { return regel.verboten.contains(c); });
    if (passt) return std::nullopt;
    return QString::fromUtf16(regel.meldung);
}
