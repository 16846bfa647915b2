// The test bench: one operation a line, read as JSON from standard input, answered on standard output.
#include <QCoreApplication>
#include <QJsonDocument>
#include <iostream>
#include <string>

#include "base/fehler.h"
#include "engine/dao/oeffner.h"
#include "engine/dbase/dbaseordner.h"
#include "engine/excel/xlsdatei.h"
#include "engine/jet/mdbdatei.h"
#include "fields/einstellungen.h"
#include "operationen.h"

namespace {

Operationen alleOperationen() {
    Operationen operationen;
    TexteAnmelden(operationen);
    ParserAnmelden(operationen);
    FeldartenAnmelden(operationen);
    ZielAnmelden(operationen);
    AufbereitungAnmelden(operationen);
    VergleichAnmelden(operationen);
    MischenAnmelden(operationen);
    UmformungAnmelden(operationen);
    DateienAnmelden(operationen);
    return operationen;
}

QJsonValue ausfuehren(const Operationen& operationen, const QJsonObject& auftrag) {
    const QString name = auftrag.value("op").toString();
    const auto operation = operationen.find(name);
    if (operation == operationen.end()) throw Abgelehnt("Unbekannte Operation: " + name);
    if (!auftrag.value("args").isArray() && auftrag.contains("args"))
        throw Abgelehnt(QStringLiteral("args ist keine Liste."));
    return (*operation)(Argumente(auftrag.value("args").toArray()));
}

QJsonObject beantworten(const Operationen& operationen, const QByteArray& zeile) {
    QJsonParseError lesefehler;
    const QJsonDocument dokument = QJsonDocument::fromJson(zeile, &lesefehler);
    QJsonObject antwort{{"id", dokument.object().value("id")}};
    try {
        if (!dokument.isObject()) throw Abgelehnt("Kein JSON-Objekt: " + lesefehler.errorString());
        antwort["result"] = ausfuehren(operationen, dokument.object());
    } catch (const Abgelehnt& fehler) {
        antwort["error"] = fehler.text();
    } catch (const EngineFehler& fehler) {
        antwort["error"] = QStringLiteral("%1: %2").arg(fehler.nummer()).arg(fehler.beschreibung());
    } catch (const std::exception& fehler) {
        antwort["error"] = QString::fromLocal8Bit(fehler.what());
    }
    return antwort;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication programm(argc, argv);
    dao::DateiOeffnerSetzen(dao::Dateiart::Access, jet::mdbOeffnen);
    dao::DateiOeffnerSetzen(dao::Dateiart::Dbase, dbase::dbaseOeffnen);
    dao::DateiOeffnerSetzen(dao::Dateiart::Excel, excel::xlsOeffnen);
    EinstellungenAnwenden(std::nullopt);
    const Operationen operationen = alleOperationen();
    for (std::string zeile; std::getline(std::cin, zeile);) {
        if (zeile.find_first_not_of(" \t\r") == std::string::npos) continue;
        const QJsonObject antwort = beantworten(operationen, QByteArray::fromStdString(zeile));
        std::cout << QJsonDocument(antwort).toJson(QJsonDocument::Compact).constData() << std::endl;
    }
    return 0;
}
