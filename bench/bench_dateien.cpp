// Rows a second of the file formats, for a table with 14 columns: written (looked at, encoded, read back and
// checked) and read, with readers that others made beside it.
#include <sys/resource.h>

#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>

#include "adressdatei.h"
#include "engine/dbase/dbaseordner.h"
#include "engine/excel/xlsdatei.h"
#include "engine/jet/anlegen.h"
#include "engine/jet/mdbdatei.h"
#include "messwerte.h"

namespace {

constexpr int kMeisteXls = 65000;  // rows that a sheet takes

// A format: how a file of it is opened, and what others read it with ("%1" is the file).
struct Format {
    QString name;
    QString datei;
    std::function<std::unique_ptr<engine::Datenbankdatei>(const QString& pfad)> oeffnen;
    QStringList andere;
};

double kindersekunden() {
    rusage verbrauch{};
    getrusage(RUSAGE_CHILDREN, &verbrauch);
    return double(verbrauch.ru_utime.tv_sec + verbrauch.ru_stime.tv_sec) +
           double(verbrauch.ru_utime.tv_usec + verbrauch.ru_stime.tv_usec) * 1e-6;
}

void melden(const QString& format, const QString& was, int zeilen, double sekunden) {
    Ausgeben({{"format", format},
              {"was", was},
              {"zeilen", zeilen},
              {"sekunden", sekunden},
              {"zeilenJeSekunde", qRound64(zeilen / sekunden)}});
}

// The engine changes workbooks and makes none.
void arbeitsmappeAnlegen(const QString& pfad) {
    const QString befehl = QStringLiteral(
        "/usr/bin/python3 -c 'import sys, xlwt; m = xlwt.Workbook(); m.add_sheet(\"Leer\").write(0, 0, "
        "\"x\"); "
        "m.save(sys.argv[1])' '%1'");
    if (std::system(befehl.arg(pfad).toLocal8Bit().constData()) != 0)
        std::fputs("python3-xlwt fehlt\n", stderr);
}

// dBase takes ten letters for a name, none of them an umlaut.
engine::TabellenDef tabelle(const Format& format) {
    engine::TabellenDef def = Adresstabelle(QStringLiteral("A"));
    if (format.name == QStringLiteral("mdb")) return def;
    for (size_t i = 0; i < def.felder.size(); ++i) def.felder[i].name = QStringLiteral("F%1").arg(i);
    def.indexe.clear();
    return def;
}

void andereMessen(const Format& format, const QString& pfad, int zeilen) {
    for (const QString& befehl : format.andere) {
        const double anfang = kindersekunden();
        const QByteArray aufruf = (befehl.arg(pfad) + QStringLiteral(" >/dev/null 2>&1")).toLocal8Bit();
        if (std::system(aufruf.constData()) != 0) {
            std::fprintf(stderr, "fehlt oder liest nicht: %s\n", aufruf.constData());
            continue;
        }
        melden(format.name, befehl.section(u' ', 0, 0), zeilen, kindersekunden() - anfang);
    }
}

void messen(const Format& format, int zeilen) {
    const QTemporaryDir ordner;
    const QString pfad = ordner.filePath(format.datei);
    const auto datei = format.oeffnen(pfad);
    double anfang = Prozessorsekunden();
    datei->anwenden({engine::TabelleAnlegen{tabelle(format), [=] { return Vorratszeilen(zeilen); }}});
    melden(format.name, QStringLiteral("schreiben"), zeilen, Prozessorsekunden() - anfang);

    anfang = Prozessorsekunden();
    const auto quelle = datei->zeilenLesen(QStringLiteral("A"));
    int gelesen = 0;
    for (engine::Zeile zeile; quelle->naechste(zeile);) ++gelesen;
    melden(format.name, QStringLiteral("lesen"), gelesen, Prozessorsekunden() - anfang);
    andereMessen(format, pfad, zeilen);
}

std::vector<Format> formate() {
    return {
        {QStringLiteral("mdb"),
         QStringLiteral("a.mdb"),
         [](const QString& pfad) {
             jet::mdbAnlegen(pfad);
             return std::make_unique<jet::MdbDatei>(pfad, QString());
         },
         {QStringLiteral("mdb-export '%1' A")}},
        {QStringLiteral("xls"),
         QStringLiteral("a.xls"),
         [](const QString& pfad) {
             arbeitsmappeAnlegen(pfad);
             return std::make_unique<excel::XlsDatei>(pfad);
         },
         {QStringLiteral("xls2csv '%1'"), QStringLiteral("ssconvert -T Gnumeric_stf:stf_csv '%1' fd://1"),
          QStringLiteral(
              "/usr/bin/python3 -c 'import sys, xlrd; s = xlrd.open_workbook(sys.argv[1]).sheets()[-1]; "
              "[s.row_values(i) for i in range(s.nrows)]' '%1'")}},
        {QStringLiteral("dbf"),
         QStringLiteral("A.dbf"),
         [](const QString& pfad) { return std::make_unique<dbase::DbaseOrdner>(QFileInfo(pfad).path()); },
         {QStringLiteral("dbview -b '%1'"),
          QStringLiteral(
              "/usr/bin/python3 -c 'import sys, dbfread; [None for _ in dbfread.DBF(sys.argv[1])]' '%1'")}}};
}

}  // namespace

int main(int argc, char** argv) {
    const int zeilen = argc > 1 ? QByteArray(argv[1]).toInt() : 1000000;
    const QString nur = QString::fromLocal8Bit(argc > 2 ? argv[2] : "");
    for (const Format& format : formate())
        if (nur.isEmpty() || format.name == nur)
            messen(format, format.name == QStringLiteral("xls") ? std::min(zeilen, kMeisteXls) : zeilen);
    return 0;
}
