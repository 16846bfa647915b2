// Writing, finding and following books of interrupted changes.
#include "engine/datei/vorgangsbuch.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cerrno>
#include <optional>

#include "base/fehler.h"
#include "engine/datei/platte.h"

namespace engine {
namespace {

constexpr qint64 kGroesstesBuch = 1 << 20;

QByteArray roh(const QString& pfad) {
    return QFile::encodeName(pfad);
}

QString buchname(qint64 prozess) {
    return QStringLiteral("lindgarn-%1-%2.vorgang").arg(Rechnerkennung()).arg(prozess);
}

bool laeuft(qint64 prozess) {
    return prozess == ::getpid() || ::kill(pid_t(prozess), 0) == 0 || errno != ESRCH;
}

quint64 knotenVon(const QString& pfad) {
    struct stat angaben {};
    return ::lstat(roh(pfad).constData(), &angaben) == 0 ? quint64(angaben.st_ino) : 0;
}

QByteArray alsText(const std::vector<Buchung>& buchungen) {
    QJsonArray liste;
    for (const Buchung& b : buchungen) {
        QJsonObject eintrag;
        eintrag[QStringLiteral("ziel")] = b.ziel;
        eintrag[QStringLiteral("alt")] = b.alt;
        eintrag[QStringLiteral("knoten")] = QString::number(b.knoten);
        liste.append(eintrag);
    }
    return QJsonDocument(liste).toJson(QJsonDocument::Compact);
}

bool istName(const QString& name) {
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(QChar(0));
}

// Only what the running program writes: names in this folder, old content under a private name of that file.
bool zulaessig(const Buchung& b, qint64 prozess) {
    if (!istName(b.ziel)) return false;
    if (b.alt.isEmpty()) return b.knoten != 0;
    return istName(b.alt) && b.alt.startsWith(b.ziel + u'.') && prozessAusName(b.alt) == prozess;
}

// Nothing when the book is not one of ours: it is then left alone.
std::optional<std::vector<Buchung>> lesen(const QString& pfad, qint64 prozess) {
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly) || datei.size() > kGroesstesBuch) return std::nullopt;
    const QJsonDocument dokument = QJsonDocument::fromJson(datei.readAll());
    // A crash while the book was written: the change had not begun.
    if (!dokument.isArray()) return std::vector<Buchung>();
    std::vector<Buchung> buchungen;
    for (const QJsonValue& wert : dokument.array()) {
        const QJsonObject eintrag = wert.toObject();
        const Buchung b{eintrag[QStringLiteral("ziel")].toString(), eintrag[QStringLiteral("alt")].toString(),
                        eintrag[QStringLiteral("knoten")].toString().toULongLong()};
        if (!zulaessig(b, prozess)) return std::nullopt;
        buchungen.push_back(b);
    }
    return buchungen;
}

// False when a file could not be put back.
bool zuruecknehmen(const QDir& ordner, const Buchung& b) {
    const QString ziel = ordner.filePath(b.ziel);
    if (b.alt.isEmpty()) {
        if (knotenVon(ziel) != b.knoten) return true;
        return ::unlink(roh(ziel).constData()) == 0;
    }
    const QString alt = ordner.filePath(b.alt);
    const quint64 alter = knotenVon(alt);
    if (alter == 0) return true;
    // Somebody else's file has taken the place since.
    const quint64 jetzt = knotenVon(ziel);
    if (jetzt != 0 && jetzt != alter && jetzt != b.knoten) return true;
    if (jetzt == alter) return ::unlink(roh(alt).constData()) == 0;
    return ::rename(roh(alt).constData(), roh(ziel).constData()) == 0;
}

void buchFolgen(const QDir& ordner, const QString& name, qint64 prozess) {
    const auto buchungen = lesen(ordner.filePath(name), prozess);
    if (!buchungen) return;
    for (auto b = buchungen->rbegin(); b != buchungen->rend(); ++b)
        if (!zuruecknehmen(ordner, *b)) return;
    ::unlink(roh(ordner.filePath(name)).constData());
}

qint64 prozessAusBuchname(const QString& name) {
    static const QRegularExpression form(
        QStringLiteral("\\Alindgarn-%1-([0-9]{1,9})\\.vorgang\\z").arg(Rechnerkennung()));
    return form.match(name).captured(1).toLongLong();
}

[[noreturn]] void unterbrochene(const QString& ordner) {
    throw EngineFehler(
        kDateifehler,
        QStringLiteral("Im Ordner %1 liegt noch eine unterbrochene Änderung. Starten Sie Lindgarn "
                       "neu; sie wird dann zurückgenommen.")
            .arg(QDir::toNativeSeparators(ordner)));
}

}  // namespace

qint64 prozessAusName(const QString& name) {
    static const QRegularExpression form(
        QStringLiteral("\\A.+\\.lindgarn-%1-([0-9]{1,9})-[0-9]{1,9}\\z").arg(Rechnerkennung()),
        QRegularExpression::DotMatchesEverythingOption);
    return form.match(name).captured(1).toLongLong();
}

Vorgangsbuch::Vorgangsbuch(const QString& ordner, const std::vector<Buchung>& buchungen)
    : pfad_(QDir(ordner).filePath(buchname(::getpid()))) {
    const QByteArray text = alsText(buchungen);
    const Griff griff(::open(roh(pfad_).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!griff.offen() && errno == EEXIST) unterbrochene(ordner);
    if (!griff.offen()) systemfehler(pfad_, QStringLiteral("angelegt"));
    Beiname halb(pfad_);
    ganzSchreiben(*griff, text.constData(), text.size(), pfad_);
    if (::fsync(*griff) != 0) systemfehler(pfad_, QStringLiteral("geschrieben"));
    ordnerAufPlatteBringen(pfad_);
    halb.behalten();
}

void Vorgangsbuch::abschliessen() {
    ordnerAufPlatteBringen(pfad_);
    if (::unlink(roh(pfad_).constData()) != 0) systemfehler(pfad_, QStringLiteral("gelöscht"));
    ordnerAufPlatteBringen(pfad_);
    pfad_.clear();
}

void Vorgangsbuch::verwerfen() {
    if (!pfad_.isEmpty()) ::unlink(roh(pfad_).constData());
    pfad_.clear();
}

void ueberbleibselRaeumen(const QString& pfad) {
    const QDir ordner(pfad);
    const QDir::Filters dateien = QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks;
    const QStringList buecher = ordner.entryList({QStringLiteral("lindgarn-*.vorgang")}, dateien);
    for (const QString& name : buecher)
        if (const qint64 prozess = prozessAusBuchname(name); prozess != 0 && !laeuft(prozess))
            buchFolgen(ordner, name, prozess);
    for (const QString& name : ordner.entryList({QStringLiteral("*.lindgarn-*")}, dateien)) {
        const qint64 prozess = prozessAusName(name);
        // What a book still speaks of is not refuse.
        if (prozess == 0 || laeuft(prozess) || ordner.exists(buchname(prozess))) continue;
        ::unlink(roh(ordner.filePath(name)).constData());
    }
}

}  // namespace engine
