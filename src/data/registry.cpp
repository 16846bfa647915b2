// The per-user store, as a settings file.
#include "data/registry.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <limits>
#include <memory>

#include "base/text.h"

namespace {

QString ablage;  // another file for the store; written by RegAblageSetzen, empty outside tests

// Inside a key's group: the mark that the key was made, and a group for each value.
QString marke() {
    return QStringLiteral("Angelegt");
}

QString ablagedatei() {
    if (!ablage.isEmpty()) return ablage;
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Tessmark/Lindgarn.ini");
}

// None when what lies there cannot be ours: a pipe would never end, a huge file not soon.
std::unique_ptr<QSettings> ablageOeffnen() {
    constexpr qint64 kGroesste = 1 << 20;
    const QFileInfo datei(ablagedatei());
    if (datei.exists() && (!datei.isFile() || datei.size() > kGroesste)) return nullptr;
    return std::make_unique<QSettings>(datei.filePath(), QSettings::IniFormat);
}

// Every root has a group of its own; a key path becomes nested groups.
QString gruppe(Schluesselwurzel wurzel, const QString& schluessel) {
    Q_ASSERT(wurzel == Schluesselwurzel::BenutzerAktuell);
    Q_UNUSED(wurzel);
    return QStringLiteral("Benutzer/") + TextErsetzen(schluessel, QStringLiteral("\\"), QStringLiteral("/"));
}

QString wertGruppe(const QString& name) {
    return QStringLiteral("Wert ") + name;
}

// Opens a key; none when it was never made.
std::unique_ptr<QSettings> schluesselOeffnen(Schluesselwurzel wurzel, const QString& schluessel) {
    auto einstellungen = ablageOeffnen();
    if (!einstellungen) return nullptr;
    einstellungen->beginGroup(gruppe(wurzel, schluessel));
    if (einstellungen->allKeys().isEmpty()) einstellungen.reset();
    return einstellungen;
}

bool passtIn32Bit(const Wert& wert) {
    if (!wert.istZahl() && wert.art() != Wert::Art::Wahrheit) return false;
    const double zahl = wert.alsZahl();
    return zahl >= std::numeric_limits<qint32>::min() && zahl <= std::numeric_limits<qint32>::max();
}

// Any other type than 1 and 4 writes nothing.
void RegWertSetzen(QSettings& schluessel, const QString& name, int typ, const Wert& wert) {
    QVariant inhalt;
    if (typ == kRegText)
        inhalt = wert.alsText();
    else if (typ == kRegZahl && passtIn32Bit(wert))
        inhalt = qint32(wert.alsZahl());
    else
        return;
    schluessel.beginGroup(wertGruppe(name));
    schluessel.setValue(QStringLiteral("Typ"), typ);
    schluessel.setValue(QStringLiteral("Inhalt"), inhalt);
}

// False when there is no such value, or none of type 1 or 4; `wert` is then left empty.
bool RegWertAbfragen(QSettings& schluessel, const QString& name, Wert& wert) {
    schluessel.beginGroup(wertGruppe(name));
    const QVariant inhalt = schluessel.value(QStringLiteral("Inhalt"));
    if (!inhalt.isValid()) return false;
    switch (schluessel.value(QStringLiteral("Typ")).toInt()) {
        case kRegText:
            wert = Wert(inhalt.toString());
            return true;
        case kRegZahl:
            wert = Wert(inhalt.toInt());
            return true;
        default:
            return false;
    }
}

}  // namespace

void RegSchluesselAnlegen(Schluesselwurzel wurzel, const QString& schluessel) {
    const auto einstellungen = ablageOeffnen();
    if (!einstellungen) return;
    einstellungen->beginGroup(gruppe(wurzel, schluessel));
    einstellungen->setValue(marke(), true);
}

void RegWertSchreiben(Schluesselwurzel wurzel, const QString& schluessel, const QString& name, int typ,
                      const Wert& wert) {
    if (const auto offen = schluesselOeffnen(wurzel, schluessel)) RegWertSetzen(*offen, name, typ, wert);
}

Wert RegWertLesen(Schluesselwurzel wurzel, const QString& schluessel, const QString& name) {
    Wert wert;
    if (const auto offen = schluesselOeffnen(wurzel, schluessel)) RegWertAbfragen(*offen, name, wert);
    return wert;
}

void RegAblageSetzen(const QString& datei) {
    ablage = datei;
}
