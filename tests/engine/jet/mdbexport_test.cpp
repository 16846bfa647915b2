// Every table of every sample, cell by cell, against what mdbtools reads.
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>
#include <cmath>
#include <list>

#include "engine/jet/katalog_lesen.h"
#include "engine/jet/zeile.h"
#include "proben.h"

namespace {

// Characters that no sample holds, so that the export needs no quoting.
constexpr char kZelle = '\x1F';
constexpr char kZeile = '\x1E';
const QString kNull = QStringLiteral("\x1D");
constexpr int kVierterStrich = 24;  // in "{00112233-4455-6677-8899-..."

std::vector<QStringList> mdbExport(const QString& datei, const QString& tabelle) {
    QProcess prozess;
    prozess.setProgram("mdb-export");
    prozess.setArguments({"-Q", "-d", QString(QChar(kZelle)), "-R", QString(QChar(kZeile)), "-0", kNull, "-b",
                          "hex", "-D", "%Y-%m-%d %H:%M:%S", "-T", "%Y-%m-%d %H:%M:%S", proben::pfad(datei),
                          tabelle});
    prozess.start();
    EXPECT_TRUE(prozess.waitForFinished(60000));
    EXPECT_EQ(prozess.exitCode(), 0);
    std::vector<QStringList> zeilen;
    for (const QByteArray& zeile : prozess.readAllStandardOutput().split(kZeile)) {
        QString text = QString::fromUtf8(zeile);
        if (zeilen.empty() && text.isEmpty()) continue;
        zeilen.push_back(text.split(QChar(kZelle)));
    }
    if (!zeilen.empty() && zeilen.back() == QStringList(QString())) zeilen.pop_back();
    return zeilen;
}

bool zahlGleich(double a, const QString& b, double genauigkeit) {
    bool ok = false;
    const double zahl = b.toDouble(&ok);
    return ok && std::abs(a - zahl) <= genauigkeit * std::max(1.0, std::abs(a));
}

// mdbtools cuts or rounds the seconds: one second of difference is none.
bool datumGleich(DatumZeit a, const QString& b) {
    const QDateTime fremd = QDateTime::fromString(b, "yyyy-MM-dd HH:mm:ss");
    const double tag = std::trunc(a.tage);
    const QDateTime eigen = QDateTime(QDate(1899, 12, 30).addDays(qint64(tag)), QTime(0, 0), Qt::UTC)
                                .addMSecs(std::llround(std::abs(a.tage - tag) * 86400000));
    return std::abs(QDateTime(fremd.date(), fremd.time(), Qt::UTC).msecsTo(eigen)) <= 1000;
}

// mdbtools ends a text at its first NUL and shows a GUID as the hexadecimal form of its text, where the
// fourth hyphen is missing.
bool textGleich(const QString& text, const QString& fremd, int typ) {
    if (typ == dao::dbGUID)
        return QString(text).remove(kVierterStrich, 1).toUtf8().toHex().toUpper() == fremd.toUtf8();
    return text.left(text.contains(QChar(0)) ? text.indexOf(QChar(0)) : text.size()) == fremd;
}

// mdbtools cuts a Binary (not an OLE) value that has a NUL byte somewhere, and does not know column type 17
// (MSysAccessObjects has it), which it shows as Null.
bool bytesGleich(const QByteArray& bytes, const QString& fremd, int typ) {
    const QString hex = QString::fromLatin1(bytes.toHex().toUpper());
    if (hex == fremd) return true;
    return typ == dao::dbBinary && bytes.contains('\0') && (fremd == kNull || hex.startsWith(fremd));
}

bool gleich(const Wert& w, const QString& fremd, int typ) {
    switch (w.art()) {
        case Wert::Art::Null:
            return fremd == kNull;
        case Wert::Art::Wahrheit:
            return fremd == (w.wahrheit() ? "1" : "0");
        case Wert::Art::Ganzzahl:
            return fremd == QString::number(w.ganzzahl());
        case Wert::Art::Gleitzahl:
            return zahlGleich(w.gleitzahl(), fremd, typ == dao::dbSingle ? 1e-6 : 1e-14);
        case Wert::Art::Waehrung:
            return zahlGleich(double(w.waehrung().zehntausendstel) / 10000, fremd, 1e-14);
        case Wert::Art::DatumZeit:
            return datumGleich(w.datumZeit(), fremd);
        case Wert::Art::Text:
            return textGleich(w.text(), fremd, typ);
        case Wert::Art::Bytes:
            return bytesGleich(w.bytes(), fremd, typ);
        case Wert::Art::Dezimal:
            return zahlGleich(w.alsZahl(), fremd, 1e-14);
        case Wert::Art::Leer:
            break;
    }
    return false;
}

bool zeileGleich(const engine::Zeile& zeile, const QStringList& fremd, const engine::TabellenDef& def,
                 const std::vector<int>& spalten) {
    for (size_t i = 0; i < zeile.size(); ++i)
        if (!gleich(zeile[i], fremd[spalten[i]], def.felder[i].typ)) return false;
    return true;
}

// Place of each of our fields in the foreign header (which stands in record order).
std::vector<int> spaltenSuchen(const engine::TabellenDef& def, const QStringList& kopf) {
    std::vector<int> orte;
    for (const engine::FeldDef& f : def.felder) orte.push_back(int(kopf.indexOf(f.name)));
    return orte;
}

QString zeileText(const engine::Zeile& zeile) {
    QStringList teile;
    for (const Wert& w : zeile)
        teile += w.art() == Wert::Art::Bytes ? QString::fromLatin1(w.bytes().left(24).toHex()) : w.alsText();
    return teile.join(u'|');
}

// Compared as sets: mdbtools lists moved rows where they are now, we where their pointer stands.
void tabelleVergleichen(const jet::Seitendatei& datei, const QString& probe, const engine::TabellenDef& def) {
    SCOPED_TRACE(def.name.toStdString());
    std::vector<QStringList> fremd = mdbExport(probe, def.name);
    ASSERT_FALSE(fremd.empty());
    const std::vector<int> spalten = spaltenSuchen(def, fremd.front());
    ASSERT_EQ(std::count(spalten.begin(), spalten.end(), -1), 0) << fremd.front().join(u'|').toStdString();
    fremd.erase(fremd.begin());
    std::list<QStringList> uebrig(fremd.begin(), fremd.end());
    jet::Tabellenleser leser(datei, jet::tabelleLesen(datei, def.name));
    engine::Zeile zeile;
    while (leser.naechste(zeile)) {
        auto treffer = std::find_if(uebrig.begin(), uebrig.end(), [&](const QStringList& f) {
            return f.size() > int(zeile.size()) - 1 && zeileGleich(zeile, f, def, spalten);
        });
        ASSERT_NE(treffer, uebrig.end()) << "nur bei uns: " << zeileText(zeile).toStdString()
                                         << "\nnächste dort: " << uebrig.front().join(u'|').toStdString();
        uebrig.erase(treffer);
    }
    EXPECT_TRUE(uebrig.empty()) << "nur dort: " << uebrig.front().join(u'|').toStdString();
}

class Mdbexport : public testing::TestWithParam<QString> {};

TEST_P(Mdbexport, JedeTabelleZelleFuerZelle) {
    PROBE_ODER_UEBERSPRINGEN(GetParam());
    if (QStandardPaths::findExecutable("mdb-export").isEmpty()) GTEST_SKIP() << "mdb-export fehlt";
    const auto datei = proben::oeffnen(GetParam());
    for (const engine::TabellenDef& def : jet::katalogLesen(*datei).tabellen) {
        if (def.attribute == dao::dbAttachedTable) continue;
        tabelleVergleichen(*datei, GetParam(), def);
    }
}

INSTANTIATE_TEST_SUITE_P(Proben, Mdbexport, testing::ValuesIn(proben::alle()), [](const auto& i) {
    return QString(i.param).replace(QRegularExpression("[^A-Za-z0-9]"), "_").toStdString();
});

}  // namespace
