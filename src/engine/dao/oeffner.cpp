// The openers of the file formats.
#include "engine/dao/oeffner.h"

#include <QFileInfo>
#include <map>

#include "base/fehler.h"
#include "engine/datei/platte.h"
#include "engine/datei/vorgangsbuch.h"
#include "engine/jet/mdbdatei.h"

namespace dao {
namespace {

constexpr QStringView kPasswortVorsatz = u";PWD=";

std::map<Dateiart, DateiOeffner>& oeffner() {
    // Written by DateiOeffnerSetzen, read by dateiOeffnen.
    static std::map<Dateiart, DateiOeffner> alle{{Dateiart::Access, jet::mdbOeffnen}};
    return alle;
}

}  // namespace

void DateiOeffnerSetzen(Dateiart art, DateiOeffner neu) {
    oeffner()[art] = std::move(neu);
}

std::optional<Dateiart> dateiartVon(const QString& verbindung) {
    if (verbindung.isEmpty() || verbindung.startsWith(kPasswortVorsatz)) return Dateiart::Access;
    if (verbindung == u"Excel 5.0;") return Dateiart::Excel;
    if (verbindung == u"Dbase 5;" || verbindung == u"Dbase III;" || verbindung == u"Dbase IV;")
        return Dateiart::Dbase;
    return std::nullopt;
}

QString passwortVon(const QString& verbindung) {
    if (!verbindung.startsWith(kPasswortVorsatz)) return QString();
    QString passwort = verbindung.mid(kPasswortVorsatz.size());
    if (passwort.endsWith(u';')) passwort.chop(1);
    return passwort;
}

std::unique_ptr<engine::Datenbankdatei> dateiOeffnen(const QString& pfad, const QString& verbindung) {
    const std::optional<Dateiart> art = dateiartVon(verbindung);
    const auto fund = art ? oeffner().find(*art) : oeffner().end();
    if (fund == oeffner().end() || !fund->second)
        throw EngineFehler(kDateiNichtLesbar,
                           QStringLiteral("Das Format der Datenbank '%1' wird nicht unterstützt.")
                               .arg(QFileInfo(pfad).fileName()));
    const QFileInfo ort(engine::zielVon(pfad));
    engine::ueberbleibselRaeumen(ort.isDir() ? ort.filePath() : ort.absolutePath());
    return fund->second(pfad, passwortVon(verbindung));
}

}  // namespace dao
