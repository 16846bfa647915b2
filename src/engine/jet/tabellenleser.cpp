// The walk over a table's rows.
#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/jet/karte.h"
#include "engine/jet/langwert.h"
#include "engine/jet/zeile.h"

namespace jet {
namespace {

// A file that lost its end must not pass for one with fewer rows.
std::vector<quint32> datenseiten(const Seitendatei& datei, const Tabelle& tabelle) {
    Karte karte = karteLesen(datei, tabelle.besitz, tabelle.name);
    if (karte.jenseits == 0) return std::move(karte.seiten);
    throw EngineFehler(kBeschaedigt,
                       u"Die Tabelle '%1' ist nicht vollständig: Der Datei fehlt ihr Ende (Seiten ab %2). "
                       u"Verwenden Sie eine "
                       "Sicherungskopie."_qs.arg(tabelle.name, QString::number(datei.seitenzahl())));
}

}  // namespace

Tabellenleser::Tabellenleser(const Seitendatei& datei, Tabelle tabelle, bool mitLangen)
    : datei_(datei), tabelle_(std::move(tabelle)), mitLangen_(mitLangen), folge_(tabelle_.feldfolge()) {
    if (tabelle_.name.isEmpty()) tabelle_.name = u"Tabelle auf Seite %1"_qs.arg(tabelle_.seite());
    seiten_ = datenseiten(datei_, tabelle_);
}

// The next page that is a data page of this table; pages of others in the map are passed over, as they
// occur where a page was given back and the map not brought up to date.
bool Tabellenleser::seiteOeffnen() {
    while (naechsteSeite_ < seiten_.size()) {
        Atempause();
        seitennummer_ = seiten_[naechsteSeite_++];
        seite_ = datei_.seite(seitennummer_);
        if (seite_[0] != char(kDatenseite) || besitzerLesen(seite_) != tabelle_.seite()) continue;
        slots_ = slotsLesen(datei_.format(), seite_, seitennummer_);
        naechsterSlot_ = 0;
        return true;
    }
    return false;
}

bool Tabellenleser::weiter() {
    while (true) {
        if (naechsterSlot_ >= slots_.size()) {
            slots_.clear();
            if (!seiteOeffnen()) return false;
            continue;
        }
        const size_t slot = naechsterSlot_++;
        if (slots_[slot].flags & kSlotGeloescht) continue;
        zeileStellen(quint8(slot));
        return true;
    }
}

void Tabellenleser::zeileStellen(quint8 slot) {
    ort_ = {seitennummer_, slot};
    if (slots_[slot].flags & kSlotZeiger) {
        const Zeilenbytes ziel = zeileHolen(datei_, ort_, true, tabelle_.name);
        fremdeSeite_ = ziel.seite;
        bytes_ = ziel.bytes;
        bytesOrt_ = ziel.ort;
    } else {
        bytes_ = QByteArrayView(seite_.constData() + slots_[slot].ab, slots_[slot].laenge);
        bytesOrt_ = ort_;
    }
}

bool Tabellenleser::naechste(engine::Zeile& zeile) {
    if (!weiter()) return false;
    const Zeilenteile zeilenteile = teile();
    zeile.resize(folge_.size());
    for (size_t feld = 0; feld < folge_.size(); ++feld) {
        const Spalte& spalte = tabelle_.spalten[size_t(folge_[feld])];
        zeile[feld] =
            spalte.istLang() ? langenLesen(spalte, zeilenteile) : wertLesen(datei_, spalte, zeilenteile);
    }
    return true;
}

// In a sound file no two rows share a long value, so all of them together cannot be longer than the file.
Wert Tabellenleser::langenLesen(const Spalte& spalte, const Zeilenteile& zeilenteile) {
    if (!mitLangen_) return Wert::null();
    const std::optional<QByteArrayView> roh = zeilenteile.roh(spalte);
    if (!roh || roh->isEmpty()) return Wert::null();
    const Langwert lang = langwertLesen(datei_, *roh, tabelle_.name);
    if (lang.form != Langform::Inline) langeBytes_ += quint64(lang.bytes.size());
    if (langeBytes_ > quint64(datei_.seitenzahl()) * quint64(datei_.format().seite))
        beschaedigt(tabelle_.name, bytesOrt_.seite);
    return wertAusBytes(datei_.format(), spalte, lang.bytes, tabelle_.name, bytesOrt_.seite);
}

Zeilenteile Tabellenleser::teile() const {
    return Zeilenteile(datei_.format(), tabelle_, bytes_, bytesOrt_.seite);
}

}  // namespace jet
