// The catalogue changed.
#include "engine/jet/katalogbau.h"

#include <QDateTime>
#include <algorithm>

#include "base/fehler.h"
#include "engine/jet/bytes.h"
#include "engine/jet/namen.h"
#include "engine/jet/wertbau.h"

namespace jet {
namespace {

constexpr quint32 kVollzugriff = 0xFFFFF;
constexpr quint32 kRechtDesErstellers = 0xF00FE;
constexpr QStringView kRelationen = u"MSysRelationships";

QByteArray langBytes(quint32 wert) {
    QByteArray bytes;
    u32Anhaengen(bytes, wert);
    return bytes;
}

QByteArray kurzBytes(qint16 wert) {
    QByteArray bytes;
    u16Anhaengen(bytes, quint16(wert));
    return bytes;
}

quint32 zahlIn(const std::optional<QByteArray>& wert) {
    return wert && wert->size() == 4 ? Sicht(*wert, u"MSysACEs", kSeiteRechte).u32(0) : 0;
}

// Texts of the catalogue are never compressed.
QByteArray katalogText(const Format& format, const QString& text) {
    return namenBytes(format, text);
}

QString textIn(const Format& format, const std::optional<QByteArray>& wert) {
    return wert ? textLesen(format, *wert) : QString();
}

bool gleicherName(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

std::unique_ptr<Systemtabelle> relationenFinden(Seitendatei& datei, Seitenvergabe& vergabe,
                                                const std::vector<Objekt>& objekte) {
    for (const Objekt& o : objekte)
        if (o.typ == kObjektTabelle && o.name == kRelationen)
            return std::make_unique<Systemtabelle>(datei, vergabe, quint32(o.id), o.name);
    return nullptr;
}

}  // namespace

Katalogbau::Katalogbau(Seitendatei& datei, Seitenvergabe& vergabe)
    : datei_(datei),
      objekte_(objekteLesen(datei)),
      objektzeilen_(datei, vergabe, kSeiteObjekte, u"MSysObjects"_qs),
      rechte_(datei, vergabe, kSeiteRechte, u"MSysACEs"_qs),
      relationen_(relationenFinden(datei, vergabe, objekte_)) {}

const Objekt& Katalogbau::benutzertabelle(const QString& name) const {
    for (const Objekt& o : objekte_) {
        const bool tabelle = o.typ == kObjektTabelle || o.typ == kObjektVerknuepft || o.typ == kObjektOdbc;
        if (!tabelle || !gleicherName(o.name, name)) continue;
        if (o.typ == kObjektTabelle && o.flags == 0) return o;
        throw EngineFehler(kSchreibgeschuetzt,
                           u"Die Tabelle '%1' ist eine verknüpfte Tabelle oder eine Systemtabelle und kann "
                           "hier nicht geändert werden."_qs.arg(name));
    }
    throw EngineFehler(kNichtGefunden,
                       u"Die Tabelle '%1' ist in der Datenbank nicht vorhanden."_qs.arg(name));
}

void Katalogbau::neuenNamenPruefen(const QString& name, const Objekt* ausser) const {
    if (!tabellenNameErlaubt(name))
        throw EngineFehler(
            kUngueltigerName,
            u"Der Name '%1' kann nicht für eine Tabelle verwendet werden. Wählen Sie einen Namen aus 1 bis "
            u"64 "
            "Zeichen ohne ! . [ ] ' \" `, ohne Steuerzeichen und ohne Leerzeichen am Anfang."_qs.arg(name));
    namenBytes(datei_.format(), name);
    for (const Objekt& o : objekte_)
        if (&o != ausser && o.eltern == kIdTabellen && gleicherName(o.name, name))
            throw EngineFehler(kNameVorhanden,
                               u"Eine Tabelle oder Abfrage mit dem Namen '%1' ist in der Datenbank schon "
                               "vorhanden. Wählen Sie einen anderen Namen."_qs.arg(name));
}

void Katalogbau::ohneRelationPruefen(const QString& name) const {
    if (!relationen_) return;
    for (const Systemtabelle::Zeile& zeile : relationen_->zeilen())
        for (const QStringView spalte : {u"szObject", u"szReferencedObject"})
            if (gleicherName(textIn(datei_.format(), zeile.werte[relationen_->spalte(spalte)]), name))
                throw EngineFehler(
                    kRelationBesteht,
                    u"Die Tabelle '%1' ist an einer Beziehung beteiligt und kann nicht gelöscht "
                    "werden. Löschen Sie zuerst die Beziehung in Access."_qs.arg(name));
}

QByteArray Katalogbau::besitzer() const {
    for (const Objekt& o : objekte_)
        if (o.typ == kObjektDatenbank) return o.besitzer;
    return {};
}

void Katalogbau::eintragen(quint32 seite, const QString& name, const QByteArray& eigenschaften) {
    Rohwerte werte = objektzeilen_.leereZeile();
    const auto setzen = [&](QStringView spalte, QByteArray bytes) {
        werte[objektzeilen_.spalte(spalte)] = std::move(bytes);
    };
    const QByteArray zeit = jetztBytes();
    setzen(u"Id", langBytes(seite));
    setzen(u"ParentId", langBytes(kIdTabellen));
    setzen(u"Name", katalogText(datei_.format(), name));
    setzen(u"Type", kurzBytes(kObjektTabelle));
    setzen(u"DateCreate", zeit);
    setzen(u"DateUpdate", zeit);
    setzen(u"Owner", besitzer());
    setzen(u"Flags", langBytes(0));
    if (!eigenschaften.isEmpty())
        setzen(u"LvProp", objektzeilen_.langesFeld(objektzeilen_.spalte(u"LvProp"), eigenschaften));
    objektzeilen_.einfuegen(werte);
    rechteEintragen(qint32(seite));
    objekte_ = objekteLesen(datei_);
}

void Katalogbau::rechteEintragen(qint32 id) {
    const size_t objekt = rechte_.spalte(u"ObjectId");
    const size_t sid = rechte_.spalte(u"SID");
    const size_t recht = rechte_.spalte(u"ACM");
    const size_t vererbbar = rechte_.spalte(u"FInheritable");
    for (const Systemtabelle::Zeile& vorlage : rechte_.zeilen()) {
        if (zahlIn(vorlage.werte[objekt]) != quint32(kIdTabellen)) continue;
        const quint32 acm = zahlIn(vorlage.werte[recht]);
        if (acm == kRechtDesErstellers) continue;
        Rohwerte werte = rechte_.leereZeile();
        werte[objekt] = langBytes(quint32(id));
        werte[sid] = vorlage.werte[sid];
        werte[recht] = langBytes(vorlage.werte[vererbbar] ? acm : kVollzugriff);
        rechte_.einfuegen(werte);
    }
}

Systemtabelle::Zeile Katalogbau::zeileVon(const Objekt& objekt) const {
    for (Systemtabelle::Zeile& zeile : objektzeilen_.zeilen())
        if (zeile.ort == objekt.ort) return std::move(zeile);
    beschaedigt(u"MSysObjects", objekt.ort.seite);
}

void Katalogbau::austragen(const Objekt& objekt) {
    const qint32 id = objekt.id;
    const Systemtabelle::Zeile zeile = zeileVon(objekt);
    const size_t eigenschaften = objektzeilen_.spalte(u"LvProp");
    if (zeile.werte[eigenschaften]) objektzeilen_.langesLoeschen(eigenschaften, *zeile.werte[eigenschaften]);
    objektzeilen_.loeschen(zeile);
    rechteAustragen(id);
    objekte_ = objekteLesen(datei_);
}

void Katalogbau::rechteAustragen(qint32 id) {
    const size_t objekt = rechte_.spalte(u"ObjectId");
    for (const Systemtabelle::Zeile& zeile : rechte_.zeilen())
        if (zeile.werte[objekt] && zahlIn(zeile.werte[objekt]) == quint32(id)) rechte_.loeschen(zeile);
}

void Katalogbau::umbenennen(const Objekt& objekt, const QString& neu) {
    const QString alt = objekt.name;
    const Systemtabelle::Zeile zeile = zeileVon(objekt);
    Rohwerte werte = zeile.werte;
    werte[objektzeilen_.spalte(u"Name")] = katalogText(datei_.format(), neu);
    werte[objektzeilen_.spalte(u"DateUpdate")] = jetztBytes();
    objektzeilen_.ersetzen(zeile, werte);
    relationenUmbenennen(alt, neu);
    objekte_ = objekteLesen(datei_);
}

void Katalogbau::relationenUmbenennen(const QString& alt, const QString& neu) {
    if (!relationen_) return;
    for (const Systemtabelle::Zeile& zeile : relationen_->zeilen()) {
        Rohwerte werte = zeile.werte;
        for (const QStringView spalte : {u"szObject", u"szReferencedObject"}) {
            std::optional<QByteArray>& name = werte[relationen_->spalte(spalte)];
            if (name && gleicherName(textLesen(datei_.format(), *name), alt))
                name = katalogText(datei_.format(), neu);
        }
        if (werte != zeile.werte) relationen_->ersetzen(zeile, werte);
    }
}

void Katalogbau::abschliessen() {
    objektzeilen_.abschliessen();
    rechte_.abschliessen();
    if (relationen_) relationen_->abschliessen();
}

}  // namespace jet
