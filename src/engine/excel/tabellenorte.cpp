// The tables of a workbook.
#include "engine/excel/tabellenorte.h"

#include <QSet>
#include <algorithm>

#include "engine/excel/blattname.h"
#include "engine/excel/bytes.h"
#include "engine/excel/satzfolge.h"
#include "engine/excel/umfang.h"

namespace excel {
namespace {

constexpr quint16 kDialogblatt = 0x0010;  // WSBOOL

bool istDialog(QByteArrayView teilstrom) {
    Satzfolge folge(teilstrom);
    int tiefe = 0;
    for (Satzsicht satz; folge.naechster(satz);) {
        if (satz.typ == kBof) ++tiefe;
        if (satz.typ == kEof && --tiefe <= 0) return false;
        if (tiefe == 1 && satz.typ == kWsbool && satz.daten.size() >= 2)
            return u16(satz.daten, 0) & kDialogblatt;
        if (satz.typ == kDimensions) return false;
    }
    return false;
}

bool nurZiffern(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// The sheet's name, its form as a name of a range, or that with a number behind it.
bool gehoertZu(const QString& bereich, const QString& blatt) {
    const QString form = bereichsname(blatt);
    return namenGleich(bereich, blatt) || (bereich.startsWith(form, Qt::CaseInsensitive) &&
                                           nurZiffern(QStringView(bereich).sliced(form.size())));
}

}  // namespace

bool istTabellenblatt(const Mappe& mappe, const Blatt& blatt) {
    return blatt.art == Blattart::Tabelle && blatt.stueck >= 0 && !blatt.name.isEmpty() &&
           !istDialog(mappe.teilstrom(blatt));
}

bool istTabellenname(const Mappe& mappe, const Definition& d) {
    return d.bereich && d.blatt == 0 && !d.verborgen() && !d.istEingebaut() && !d.istMakro() &&
           !d.text.isEmpty() && istTabellenblatt(mappe, mappe.blaetter()[size_t(d.bereich->blatt)]);
}

namespace {

// The name that covers all of a sheet and is called like it: both are one table.
std::optional<size_t> namensvetter(const Mappe& mappe, const Texttafel& texte,
                                   const std::vector<Definition>& definitionen, int blatt) {
    const QString& name = mappe.blaetter()[size_t(blatt)].name;
    std::optional<Umfang> umfang;
    for (size_t i = 0; i < definitionen.size(); ++i) {
        const Definition& d = definitionen[i];
        if (!istTabellenname(mappe, d) || d.bereich->blatt != blatt || !gehoertZu(d.text, name)) continue;
        if (!umfang) umfang = umfangVon(mappe, texte, blatt);
        if (umfang->bereich && d.bereich->umfasst(*umfang->bereich)) return i;
    }
    return {};
}

}  // namespace

bool namenGleich(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

std::vector<Tabellenort> tabellenSuchen(const Mappe& mappe, const Texttafel& texte,
                                        const std::vector<Definition>& definitionen) {
    std::vector<Tabellenort> tabellen;
    QSet<size_t> vergeben;
    QSet<QString> namen;
    const auto eintragen = [&](Tabellenort ort) {
        if (namen.contains(ort.name.toUpper())) return;
        namen.insert(ort.name.toUpper());
        tabellen.push_back(std::move(ort));
    };
    for (size_t i = 0; i < mappe.blaetter().size(); ++i) {
        const Blatt& blatt = mappe.blaetter()[i];
        if (!istTabellenblatt(mappe, blatt)) continue;
        const std::optional<size_t> vetter = namensvetter(mappe, texte, definitionen, int(i));
        if (vetter) vergeben.insert(*vetter);
        eintragen({vetter ? blatt.name : blatt.name + u'$', int(i), vetter, {}});
    }
    for (size_t i = 0; i < definitionen.size(); ++i) {
        const Definition& d = definitionen[i];
        if (!vergeben.contains(i) && istTabellenname(mappe, d))
            eintragen({d.text, d.bereich->blatt, i, d.bereich});
    }
    return tabellen;
}

const Tabellenort* tabelleFinden(const std::vector<Tabellenort>& tabellen, const QString& name) {
    const auto fund = std::find_if(tabellen.begin(), tabellen.end(),
                                   [&](const Tabellenort& t) { return namenGleich(t.name, name); });
    return fund == tabellen.end() ? nullptr : &*fund;
}

}  // namespace excel
