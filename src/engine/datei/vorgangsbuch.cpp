// Writing, finding and following books of interrupted changes.
#include "engine/datei/vorgangsbuch.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cerrno>
#include <csignal>
#include <optional>

#include "base/fehler.h"
#include "engine/datei/platte.h"
#include "engine/datei/prozess.h"

namespace engine {
namespace {

constexpr qint64 kGroesstesBuch = 1 << 20;

QByteArray roh(const QString& pfad) {
    return QFile::encodeName(pfad);
}

QString buchname(const Prozess& prozess) {
    return QStringLiteral("lindgarn-%1.vorgang").arg(prozesskennung(prozess));
}

// The process whose numbers are the two groups of the form; nothing where the form does not fit.
std::optional<Prozess> prozessAus(const QRegularExpression& form, const QString& name) {
    const QRegularExpressionMatch fund = form.match(name);
    if (!fund.hasMatch()) return std::nullopt;
    return Prozess{fund.captured(1).toLongLong(), fund.captured(2).toULongLong()};
}

std::optional<Prozess> prozessAusBuchname(const QString& name) {
    static const QRegularExpression form(QStringLiteral("\\Alindgarn-%1\\.vorgang\\z").arg(prozessmuster()));
    return prozessAus(form, name);
}

// Private names are "<name of the file>.lindgarn-<computer>-<process>-<its beginning>-<number>".
std::optional<Prozess> prozessAusBeinamen(const QString& name) {
    static const QRegularExpression form(
        QStringLiteral("\\A.+\\.lindgarn-%1-[0-9]{1,9}\\z").arg(prozessmuster()),
        QRegularExpression::DotMatchesEverythingOption);
    return prozessAus(form, name);
}

// Not by QDir, to which a name with a colon in front is none in the folder.
QString darin(const QString& ordner, const QString& name) {
    return ordner + u'/' + name;
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
bool zulaessig(const Buchung& b, const Prozess& prozess) {
    if (!istName(b.ziel)) return false;
    if (b.alt.isEmpty()) return b.knoten != 0;
    return istName(b.alt) && b.alt.startsWith(beinamenanfang(b.ziel)) && prozessAusBeinamen(b.alt) == prozess;
}

// Where all may put files and none may take those of others away, a book of somebody else would do it for
// him.
bool darfBestimmen(const QString& ordner, const QString& buch) {
    struct stat dort {};
    struct stat angaben {};
    return ::stat(roh(ordner).constData(), &dort) == 0 && ::lstat(roh(buch).constData(), &angaben) == 0 &&
           ((dort.st_mode & S_ISVTX) == 0 || angaben.st_uid == ::geteuid());
}

std::optional<QByteArray> inhalt(const QString& pfad) {
    QFile datei(pfad);
    if (!QFileInfo(pfad).isFile() || !datei.open(QIODevice::ReadOnly) || datei.size() > kGroesstesBuch)
        return std::nullopt;
    return datei.readAll();
}

// Nothing when the book is not one of ours: it is then left alone.
std::optional<std::vector<Buchung>> lesen(const QString& pfad, const Prozess& prozess) {
    const std::optional<QByteArray> text = inhalt(pfad);
    if (!text) return std::nullopt;
    const QJsonDocument dokument = QJsonDocument::fromJson(*text);
    // A crash while the book was written: the change had not begun.
    if (!dokument.isArray()) return std::vector<Buchung>();
    std::vector<Buchung> buchungen;
    for (const QJsonValue wert : dokument.array()) {
        const QJsonObject eintrag = wert.toObject();
        const Buchung b{eintrag[QStringLiteral("ziel")].toString(), eintrag[QStringLiteral("alt")].toString(),
                        eintrag[QStringLiteral("knoten")].toString().toULongLong()};
        if (!zulaessig(b, prozess)) return std::nullopt;
        buchungen.push_back(b);
    }
    return buchungen;
}

// A folder is none of ours.
bool istOrdner(const QString& pfad) {
    const QFileInfo angaben(pfad);
    return angaben.isDir() && !angaben.isSymLink();
}

// False when a file could not be put back.
bool zuruecknehmen(const QString& ordner, const Buchung& b) {
    const QString ziel = darin(ordner, b.ziel);
    if (b.alt.isEmpty()) {
        if (knotenVon(ziel) != b.knoten || istOrdner(ziel)) return true;
        return ::unlink(roh(ziel).constData()) == 0;
    }
    const QString alt = darin(ordner, b.alt);
    const quint64 alter = knotenVon(alt);
    if (alter == 0 || istOrdner(alt) || istOrdner(ziel)) return true;
    // Somebody else's file has taken the place since.
    const quint64 jetzt = knotenVon(ziel);
    if (jetzt != 0 && jetzt != alter && jetzt != b.knoten) return true;
    if (jetzt == alter) return ::unlink(roh(alt).constData()) == 0;
    return ::rename(roh(alt).constData(), roh(ziel).constData()) == 0;
}

void buchFolgen(const QString& ordner, const QString& name, const Prozess& prozess) {
    const QString buch = darin(ordner, name);
    const auto buchungen = darfBestimmen(ordner, buch) ? lesen(buch, prozess) : std::nullopt;
    if (!buchungen) return;
    for (auto b = buchungen->rbegin(); b != buchungen->rend(); ++b)
        if (!zuruecknehmen(ordner, *b)) return;
    ordnerAufPlatteBringen(buch);
    ::unlink(roh(buch).constData());
}

[[noreturn]] void unterbrochene(const QString& ordner) {
    throw EngineFehler(
        kDateifehler,
        QStringLiteral("Im Ordner %1 liegt noch eine unterbrochene Änderung. Starten Sie Lindgarn "
                       "neu; sie wird dann zurückgenommen.")
            .arg(QDir::toNativeSeparators(ordner)));
}

}  // namespace

Vorgangsbuch::Vorgangsbuch(const QString& ordner, const std::vector<Buchung>& buchungen)
    : pfad_(QDir(ordner).filePath(buchname(eigenerProzess()))) {
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

void ueberbleibselRaeumen(const QString& ordner) {
    const QDir::Filters dateien = QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks;
    const QDir verzeichnis(ordner);
    for (const QString& name : verzeichnis.entryList({QStringLiteral("lindgarn-*.vorgang")}, dateien))
        if (const auto prozess = prozessAusBuchname(name); prozess && !laeuft(*prozess))
            buchFolgen(ordner, name, *prozess);
    for (const QString& name : verzeichnis.entryList({QStringLiteral("*.lindgarn-*")}, dateien)) {
        const auto prozess = prozessAusBeinamen(name);
        // What a book still speaks of is not refuse.
        if (!prozess || laeuft(*prozess) || verzeichnis.exists(buchname(*prozess))) continue;
        ::unlink(roh(darin(ordner, name)).constData());
    }
}

}  // namespace engine
