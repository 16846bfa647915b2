// Tables of generated addresses.
#include "adressdatei.h"

#include <QFile>

#include "adressliste.h"
#include "engine/jet/anlegen.h"
#include "engine/jet/mdbdatei.h"
#include "engine/typen.h"

namespace {

constexpr int kVorrat = 5000;
constexpr int kErsterTag = 33000;  // in 1990

engine::FeldDef feld(const QString& name, int typ, int groesse = 0) {
    engine::FeldDef def;
    def.name = name;
    def.typ = typ;
    def.groesse = groesse;
    return def;
}

engine::IndexDef index(const QString& name, const QString& feld, bool primaer) {
    engine::IndexDef def;
    def.name = name;
    def.felder.push_back({feld, false});
    def.eindeutig = def.primaer = primaer;
    return def;
}

// dBase files have the letters of Western Europe only.
QString westlich(QString text) {
    return text.replace(QChar(u'ı'), QChar(u'i')).replace(QChar(u'ş'), QChar(u's'));
}

// Empty fields are Null, as in a file that somebody typed.
engine::Zeile zeileVon(int nummer, const QStringList& adresse) {
    engine::Zeile zeile{Wert(nummer)};
    for (const QString& text : adresse) zeile.push_back(text.isEmpty() ? Wert::null() : Wert(text));
    zeile.push_back(Wert(DatumZeit{double(kErsterTag + nummer % 10000)}));
    zeile.push_back(Wert(Waehrung{qint64(nummer % 100000) * 1225}));
    return zeile;
}

class Gezogene : public engine::Zeilenquelle {
  public:
    Gezogene(int anzahl, quint32 samen, bool doppelt) : anzahl_(anzahl), doppelt_(doppelt), liste_(samen) {}
    bool naechste(engine::Zeile& zeile) override {
        if (nummer_ == anzahl_) return false;
        if (!doppelt_ || nummer_ % 2 == 0) adresse_ = liste_.naechste();
        zeile = zeileVon(++nummer_, adresse_);
        return true;
    }

  private:
    int anzahl_;
    bool doppelt_;
    int nummer_ = 0;
    Adressliste liste_;
    QStringList adresse_;
};

class AusVorrat : public engine::Zeilenquelle {
  public:
    explicit AusVorrat(int anzahl) : anzahl_(anzahl) {
        Gezogene quelle(kVorrat, 1, false);
        for (engine::Zeile zeile; quelle.naechste(zeile);) {
            for (Wert& wert : zeile)
                if (wert.istText()) wert = Wert(westlich(wert.text()));
            vorrat_.push_back(zeile);
        }
    }
    bool naechste(engine::Zeile& zeile) override {
        if (nummer_ == anzahl_) return false;
        zeile = vorrat_[size_t(nummer_ % kVorrat)];
        zeile[0] = Wert(++nummer_);
        return true;
    }

  private:
    int anzahl_;
    int nummer_ = 0;
    std::vector<engine::Zeile> vorrat_;
};

}  // namespace

engine::TabellenDef Adresstabelle(const QString& name) {
    static const char16_t* const kNamen[kAdressfelder] = {u"Firma",   u"Anrede", u"Vorname", u"Nachname",
                                                          u"Straße",  u"PLZ",    u"Ort",     u"Telefon",
                                                          u"Telefax", u"EMail",  u"Homepage"};
    static constexpr int kGroessen[kAdressfelder] = {80, 40, 40, 50, 60, 10, 50, 30, 30, 80, 80};
    engine::TabellenDef def;
    def.name = name;
    def.felder.push_back(feld(QStringLiteral("Kundennummer"), dao::dbLong));
    for (int i = 0; i < kAdressfelder; ++i)
        def.felder.push_back(feld(QString::fromUtf16(kNamen[i]), dao::dbText, kGroessen[i]));
    def.felder.push_back(feld(QStringLiteral("Erfasst"), dao::dbDate));
    def.felder.push_back(feld(QStringLiteral("Umsatz"), dao::dbCurrency));
    def.indexe.push_back(index(QStringLiteral("PrimaryKey"), QStringLiteral("Kundennummer"), true));
    def.indexe.push_back(index(QStringLiteral("Nachname"), QStringLiteral("Nachname"), false));
    return def;
}

FeldZuordnungen Adresstabellenzuordnung() {
    const FeldZuordnung ignoriert{0, 1};
    FeldZuordnungen zuordnung{{1, Maske({kIndex})}};
    zuordnung.insert(zuordnung.end(), Adresszuordnung().begin(), Adresszuordnung().end());
    zuordnung.insert(zuordnung.end(), 2, ignoriert);
    return zuordnung;
}

std::unique_ptr<engine::Zeilenquelle> Adresszeilen(int anzahl, quint32 samen, bool doppelt) {
    return std::make_unique<Gezogene>(anzahl, samen, doppelt);
}

std::unique_ptr<engine::Zeilenquelle> Vorratszeilen(int anzahl) {
    return std::make_unique<AusVorrat>(anzahl);
}

void AdressdateiAnlegen(const QString& pfad, int anzahl, bool doppelt) {
    QFile::remove(pfad);
    jet::mdbAnlegen(pfad);
    jet::MdbDatei datei(pfad, QString());
    datei.anwenden({engine::TabelleAnlegen{Adresstabelle(QStringLiteral("Adressen")),
                                           [=] { return Adresszeilen(anzahl, 1, doppelt); }},
                    engine::TabelleAnlegen{Adresstabelle(QStringLiteral("Messe")),
                                           [=] { return Adresszeilen(anzahl / 10, 2, false); }}});
}
