// Random schemas and rows of every type: what was written is what is read, by the program and by dbfread.
#include <cmath>
#include <random>

#include "dbasebank.h"

namespace {

using namespace dbasebank;

const QString kA = QStringLiteral("A");

class Zufall {
  public:
    explicit Zufall(unsigned saat) : quelle_(saat) {}
    int bis(int n) { return int(quelle_() % unsigned(n)); }

    FeldDef spalte(int nummer) {
        static const int kTypen[] = {dao::dbBoolean,  dao::dbByte,   dao::dbInteger, dao::dbLong,
                                     dao::dbCurrency, dao::dbSingle, dao::dbDouble,  dao::dbDate,
                                     dao::dbText,     dao::dbMemo};
        FeldDef f = feld(QStringLiteral("Feld %1").arg(nummer), kTypen[bis(10)]);
        if (f.typ == dao::dbText) f.groesse = 1 + bis(255);
        return f;
    }

    Wert wert(const FeldDef& f) {
        if (bis(8) == 0) return Wert::null();
        switch (f.typ) {
            case dao::dbBoolean:
                return Wert(bis(2) == 0);
            case dao::dbByte:
                return Wert(bis(256));
            case dao::dbInteger:
                return Wert(bis(65536) - 32768);
            case dao::dbLong:
                return Wert(qint64(qint32(quelle_())));
            case dao::dbCurrency:
                return Wert(Waehrung{qint64(qint32(quelle_())) * 1000 + bis(1000)});
            case dao::dbSingle:
                return Wert(double(float(bis(100000)) / 8));
            case dao::dbDouble:
                return Wert((bis(2000000) - 1000000) / 1000.0);
            case dao::dbDate:
                return Wert(DatumZeit{double(bis(80000) - 20000)});
            default:
                return Wert(text(f.typ == dao::dbMemo ? bis(1500) : bis(f.groesse + 1)));
        }
    }

  private:
    QString text(int laenge) {
        static const QString kZeichen = QStringLiteral("abc XYZ äöüß ÄÖÜ 0123 éñ¿ ½");
        QString t;
        for (int i = 0; i < laenge; ++i) t += kZeichen[bis(int(kZeichen.size()))];
        return t;
    }

    std::mt19937 quelle_;
};

// What a value is when it comes back: blanks at a text's end are the field's, whole numbers are doubles.
Wert zurueck(const Wert& wert, const FeldDef& f) {
    if (f.typ == dao::dbBoolean) return wert.istNull() ? Wert(false) : wert;
    if (wert.istNull()) return wert;
    if (wert.istText()) {
        QString text = wert.text();
        const bool nurLeerzeichen = text.count(u' ') == text.size();
        while ((f.typ != dao::dbMemo || nurLeerzeichen) && text.endsWith(u' ')) text.chop(1);
        return text.isEmpty() ? Wert::null() : Wert(text);
    }
    return wert.art() == Wert::Art::DatumZeit ? wert : Wert(wert.alsZahl());
}

bool gleich(const Wert& a, const Wert& b) {
    if (a.art() != Wert::Art::Gleitzahl || b.art() != Wert::Art::Gleitzahl) return a == b;
    return std::abs(a.gleitzahl() - b.gleitzahl()) <= 1e-14 * std::abs(a.gleitzahl());
}

bool gleich(const Wert& hier, const QJsonValue& dort) {
    switch (hier.art()) {
        case Wert::Art::Null:
            return dort.isNull() || dort.toString(QStringLiteral("x")).isEmpty();
        case Wert::Art::Wahrheit:
            return dort.toBool() == hier.wahrheit();
        case Wert::Art::DatumZeit:
            return dort.toString() ==
                   QDate(1899, 12, 30).addDays(qint64(hier.datumZeit().tage)).toString(Qt::ISODate);
        case Wert::Art::Text:
            return dort.toString() == hier.text();
        default:
            return std::abs(dort.toDouble() - hier.alsZahl()) <= 1e-14 * std::abs(hier.alsZahl());
    }
}

class DbaseZufall : public DbaseTest, public testing::WithParamInterface<unsigned> {};

TEST_P(DbaseZufall, SchemaUndZeilen) {
    Zufall zufall(GetParam());
    TabellenDef def = tabelle(kA, {});
    const int spalten = 1 + zufall.bis(25);
    for (int i = 0; i < spalten; ++i) def.felder.push_back(zufall.spalte(i));
    std::vector<Zeile> zeilen(size_t(zufall.bis(200)));
    for (Zeile& zeile : zeilen)
        for (const FeldDef& f : def.felder) zeile.push_back(zufall.wert(f));
    schreibeTabelle(def, zeilen);

    dbase::DbaseOrdner datei(ordner.path());
    const std::vector<Zeile> gelesen = alleZeilen(datei, kA);
    const QJsonArray fremd = dbfread(pfad(QStringLiteral("A.dbf")))["zeilen"].toArray();
    ASSERT_EQ(gelesen.size(), zeilen.size());
    ASSERT_EQ(fremd.size(), qsizetype(zeilen.size()));
    for (size_t i = 0; i < zeilen.size(); ++i)
        for (size_t k = 0; k < def.felder.size(); ++k) {
            const Wert erwartet = zurueck(zeilen[i][k], def.felder[k]);
            ASSERT_TRUE(gleich(gelesen[i][k], erwartet))
                << i << "/" << k << " " << gelesen[i][k].alsText().toStdString() << " / "
                << erwartet.alsText().toStdString();
            // dbfread misreads a memo of dBase IV that fills its blocks.
            if (def.felder[k].typ == dao::dbMemo && (erwartet.alsText().size() + 8) % 512 == 0) continue;
            const QJsonValue dort = fremd[qsizetype(i)].toArray()[qsizetype(k)];
            ASSERT_TRUE(gleich(erwartet, dort)) << i << "/" << k << " " << erwartet.alsText().toStdString()
                                                << " / " << dort.toVariant().toString().toStdString();
        }

    // A copy of what was read is the same file, memos included.
    TabellenDef kopie = datei.katalogLesen().tabellen[0];
    kopie.name = QStringLiteral("B");
    datei.anwenden({anlegen(kopie, gelesen)});
    QByteArray eins = inhalt(pfad(QStringLiteral("A.dbf")));
    QByteArray zwei = inhalt(pfad(QStringLiteral("B.dbf")));
    for (size_t k = 0; k < def.felder.size(); ++k)
        EXPECT_EQ(eins.mid(32 + 32 * qsizetype(k), 32), zwei.mid(32 + 32 * qsizetype(k), 32));
    EXPECT_EQ(alleZeilen(datei, QStringLiteral("B")), gelesen);
}

INSTANTIATE_TEST_SUITE_P(Saaten, DbaseZufall, testing::Range(1u, 31u));

}  // namespace
