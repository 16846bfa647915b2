// Reading the SST.
#include "engine/excel/texttafel.h"

#include "base/atempause.h"

namespace excel {
namespace {

constexpr int kSstKopf = 8;  // both counts

std::vector<QByteArrayView> sstStuecke(const Mappe& mappe) {
    std::vector<QByteArrayView> stuecke;
    size_t i = mappe.suchen(kSst);
    const auto& saetze = mappe.globale();
    if (i >= saetze.size()) return stuecke;
    const QByteArrayView erster = saetze[i].daten;
    stuecke.push_back(erster.sliced(std::min<qsizetype>(kSstKopf, erster.size())));
    while (++i < saetze.size() && saetze[i].typ == kContinue) stuecke.push_back(saetze[i].daten);
    return stuecke;
}

}  // namespace

Texttafel::Texttafel(const Mappe& mappe) : leser_(sstStuecke(mappe)) {
    while (!leser_.amEnde()) {
        const Kettenleser::Stelle stelle = leser_.stelle();
        const Kettenleser::Kopf kopf = leser_.lesen(nullptr);
        heil_ = heil_ && kopf.ganz;
        eintraege_.push_back({stelle, quint16(kopf.laenge), kopf.schlicht});
        Atempause();
    }
}

QString Texttafel::text(quint32 nummer) const {
    QString text;
    if (nummer >= eintraege_.size()) return text;
    leser_.setzen(eintraege_[nummer].stelle);
    leser_.lesen(&text);
    return text;
}

std::pair<int, int> Texttafel::ort(quint32 nummer) const {
    const Kettenleser::Stelle stelle = eintraege_[nummer].stelle;
    return {int(stelle.stueck), int(stelle.ort) + (stelle.stueck == 0 ? kSstKopf : 0)};
}

}  // namespace excel
