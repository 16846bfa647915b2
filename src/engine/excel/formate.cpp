// Number formats.
#include "engine/excel/formate.h"

#include <algorithm>

#include "engine/excel/bytes.h"
#include "engine/excel/ketten.h"

namespace excel {
namespace {

constexpr int kXfFormat = 2;  // place of the format number in XF

bool zwischen(int n, int von, int bis) {
    return n >= von && n <= bis;
}

Formatangabe eingebaut(int nummer) {
    if (zwischen(nummer, 14, 22) || zwischen(nummer, 27, 36) || zwischen(nummer, 45, 47) ||
        zwischen(nummer, 50, 58))
        return {Formatart::Datum, 0};
    if (zwischen(nummer, 5, 8) || zwischen(nummer, 37, 44)) return {Formatart::Waehrung, 0};
    return {};
}

bool istDauer(QStringView klammer) {
    return !klammer.isEmpty() && std::all_of(klammer.begin(), klammer.end(), [&](QChar c) {
        return c.toLower() == klammer.front().toLower() && QStringView(u"hms").contains(c.toLower());
    });
}

// What is left of a format's first section when quoted and escaped parts are gone.
struct Geruest {
    QString zeichen;
    bool dauer = false;
    bool waehrung = false;
};

bool nenntWaehrung(QStringView text) {
    static const QStringView zeichen[] = {u"€",   u"$",   u"£",  u"¥",  u"DM", u"Fr.", u"SFr", u"CHF",
                                          u"EUR", u"USD", u"öS", u"kr", u"zł", u"Kč",  u"Ft"};
    return std::any_of(std::begin(zeichen), std::end(zeichen),
                       [&](QStringView z) { return text.contains(z); });
}

Geruest geruestVon(const QString& format) {
    Geruest g;
    QString woertlich;
    for (qsizetype i = 0; i < format.size() && format[i] != u';'; ++i) {
        const QChar c = format[i];
        if (c == u'"') {
            const qsizetype zu = format.indexOf(u'"', i + 1);
            const qsizetype bis = zu < 0 ? format.size() : zu;
            woertlich += QStringView(format).sliced(i + 1, bis - i - 1);
            i = bis;
        } else if (c == u'[') {
            const qsizetype zu = format.indexOf(u']', i);
            const qsizetype bis = zu < 0 ? format.size() : zu;
            const QStringView innen = QStringView(format).sliced(i + 1, std::max<qsizetype>(0, bis - i - 1));
            g.dauer = g.dauer || istDauer(innen);
            g.waehrung = g.waehrung || (innen.startsWith(u'$') && innen.size() > 1 && innen[1] != u'-');
            i = bis;
        } else if (c == u'\\' || c == u'_' || c == u'*') {
            if (c == u'\\' && i + 1 < format.size()) woertlich += format[i + 1];
            ++i;
        } else {
            g.zeichen += c;
        }
    }
    g.waehrung = g.waehrung || nenntWaehrung(woertlich) || nenntWaehrung(g.zeichen);
    return g;
}

// "ss.000" has its zeros behind a point, "0.00" has not.
bool istDatum(const Geruest& g) {
    if (g.dauer) return true;
    bool buchstabe = false;
    bool hinterPunkt = false;
    for (const QChar c : g.zeichen) {
        if (c == u'#' || c == u'?' || (c == u'0' && !hinterPunkt)) return false;
        hinterPunkt = c == u'.' || c == u',' || (hinterPunkt && c == u'0');
        buchstabe = buchstabe || QStringView(u"dmyhs").contains(c.toLower());
    }
    return buchstabe;
}

}  // namespace

Formatangabe formatDeuten(int nummer, const QString& text) {
    if (text.isEmpty()) return eingebaut(nummer);
    const bool nurNullen = std::all_of(text.begin(), text.end(), [](QChar c) { return c == u'0'; });
    // A single zero is the plain whole number.
    if (nurNullen && text.size() > 1) return {Formatart::Nullen, int(std::min<qsizetype>(text.size(), 255))};
    // "GENERAL" and "Standard" hold date letters.
    if (text.startsWith(u"General", Qt::CaseInsensitive) || text.startsWith(u"Standard", Qt::CaseInsensitive))
        return {};
    const Geruest g = geruestVon(text);
    if (istDatum(g)) return {Formatart::Datum, 0};
    return {g.waehrung ? Formatart::Waehrung : Formatart::Zahl, 0};
}

std::pair<int, QString> formatLesen(const Mappe& mappe, const QByteArray& daten) {
    if (daten.size() < 3) return {-1, {}};
    const int nummer = u16(daten, 0);
    if (!mappe.biff8()) {
        const qsizetype laenge = std::min<qsizetype>(u8(daten, 2), daten.size() - 3);
        return {nummer, mappe.codeseite().lesen(QByteArrayView(daten).sliced(3, laenge))};
    }
    Kettenleser leser({QByteArrayView(daten).sliced(2)});
    QString text;
    leser.lesen(&text);
    return {nummer, text};
}

Formate::Formate(const Mappe& mappe) {
    for (const Satz& satz : mappe.globale()) {
        if (satz.typ == kFormat) {
            auto [nummer, text] = formatLesen(mappe, satz.daten);
            texte_[nummer] = text;
        }
        if (satz.typ == kXf)
            nummern_.push_back(satz.daten.size() >= kXfFormat + 2 ? u16(satz.daten, kXfFormat) : 0);
    }
    for (const int nummer : nummern_) angaben_.push_back(formatDeuten(nummer, text(nummer)));
}

QString Formate::text(int nummer) const {
    const auto fund = texte_.find(nummer);
    return fund == texte_.end() ? QString() : fund->second;
}

}  // namespace excel
