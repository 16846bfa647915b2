// Small steps on the file system.
#include "engine/datei/platte.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/datei/prozess.h"

namespace engine {
namespace {

constexpr int kKopierBlock = 1 << 20;
constexpr int kVersucheFuerNamen = 100;

void kopieren(int von, int nach, const QString& pfad) {
    QByteArray block(kKopierBlock, Qt::Uninitialized);
    for (;;) {
        const ssize_t gelesen = ::read(von, block.data(), size_t(block.size()));
        if (gelesen == 0) return;
        if (gelesen < 0) systemfehler(pfad, QStringLiteral("gelesen"));
        ganzSchreiben(nach, block.constData(), gelesen, pfad);
        Atempause();
    }
}

// A file's name may have 255 bytes; the private one has some forty more. What is cut off still tells two
// apart.
QString gekuerzt(const QString& name) {
    constexpr qsizetype kLaengster = 200;
    constexpr qsizetype kImmerKurzGenug = 50;
    const QByteArray roh = QFile::encodeName(name);
    if (roh.size() <= kLaengster) return name;
    return name.left(kImmerKurzGenug) + u'~' +
           QString::fromLatin1(QCryptographicHash::hash(roh, QCryptographicHash::Sha256).toHex().left(16));
}

QString nameDaneben(const QString& ziel, int versuch) {
    // Not by `arg`, to which a "%2C" in a name would be a place to fill in.
    return QFileInfo(ziel).path() + u'/' + beinamenanfang(QFileInfo(ziel).fileName()) +
           prozesskennung(eigenerProzess()) + u'-' + QString::number(versuch);
}

// Mode, owner and group of another file.
void rechteUebernehmen(int von, int nach, const QString& ziel) {
    struct stat angaben {};
    if (::fstat(von, &angaben) != 0) systemfehler(ziel, QStringLiteral("gelesen"));
    // The owner may only be changed by the superuser; a file that is ours keeps it anyway.
    if (::fchown(nach, angaben.st_uid, angaben.st_gid) != 0 && ::fchown(nach, uid_t(-1), angaben.st_gid) != 0)
        errno = 0;
    if (::fchmod(nach, angaben.st_mode & 07777) != 0) systemfehler(ziel, QStringLiteral("geschrieben"));
}

// What the system gives a new file.
void rechteNeuerDatei(int fd, const QString& ziel) {
    const mode_t maske = ::umask(0);
    ::umask(maske);
    if (::fchmod(fd, 0666 & ~maske) != 0) systemfehler(ziel, QStringLiteral("geschrieben"));
}

Beiname neueDatei(const QString& ziel, const QString& vorbild, bool mitInhalt) {
    const Griff alt = vorbild.isEmpty() ? Griff() : zumLesenOeffnen(vorbild);
    for (int i = 0; i < kVersucheFuerNamen; ++i) {
        const QString name = nameDaneben(ziel, i);
        const Griff neu(
            ::open(QFile::encodeName(name).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (!neu.offen()) {
            if (errno == EEXIST) continue;
            systemfehler(ziel, QStringLiteral("geschrieben"));
        }
        Beiname beiname(name);
        if (mitInhalt) kopieren(*alt, *neu, ziel);
        if (alt.offen())
            rechteUebernehmen(*alt, *neu, ziel);
        else
            rechteNeuerDatei(*neu, ziel);
        return beiname;
    }
    throw EngineFehler(
        kDateifehler,
        QStringLiteral("Neben der Datei '%1' kann keine neue Datei angelegt werden.").arg(ziel));
}

}  // namespace

Griff::~Griff() {
    if (fd_ >= 0) ::close(fd_);
}

Beiname& Beiname::operator=(Beiname&& anderer) noexcept {
    std::swap(pfad_, anderer.pfad_);
    return *this;
}

Beiname::~Beiname() {
    if (!pfad_.isEmpty()) QFile::remove(pfad_);
}

void systemfehler(const QString& pfad, const QString& was) {
    const int grund = errno;
    const QString name = QFileInfo(pfad).fileName();
    if (grund == ENOSPC || grund == EDQUOT)
        throw EngineFehler(kDatentraegerVoll,
                           QStringLiteral("Auf dem Datenträger ist nicht genug Platz, um die Datei '%1' zu "
                                          "schreiben. Schaffen Sie Platz und wählen Sie dann 'Wiederholen'.")
                               .arg(name));
    if (grund == EACCES || grund == EPERM || grund == EROFS)
        throw EngineFehler(
            kSchreibgeschuetzt,
            QStringLiteral("Die Datei '%1' oder ihr Ordner ist schreibgeschützt. Heben Sie den "
                           "Schreibschutz auf und versuchen Sie es noch einmal.")
                .arg(name));
    throw EngineFehler(kDateifehler, QStringLiteral("Die Datei '%1' kann nicht %2 werden: %3.")
                                         .arg(name, was, QString::fromLocal8Bit(std::strerror(grund))));
}

QString beinamenanfang(const QString& name) {
    return gekuerzt(name) + QStringLiteral(".lindgarn-");
}

void keineDatei(const QString& pfad) {
    throw EngineFehler(kDateifehler,
                       QStringLiteral("'%1' ist keine gewöhnliche Datei. Wählen Sie eine andere.")
                           .arg(QFileInfo(pfad).fileName()));
}

Griff zumLesenOeffnen(const QString& pfad) {
    // A pipe would wait for its other end.
    Griff griff(::open(QFile::encodeName(pfad).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!griff.offen()) systemfehler(pfad, QStringLiteral("gelesen"));
    struct stat angaben {};
    if (::fstat(*griff, &angaben) != 0) systemfehler(pfad, QStringLiteral("gelesen"));
    if (!S_ISREG(angaben.st_mode)) keineDatei(pfad);
    return griff;
}

QString zielVon(const QString& pfad) {
    const QString echt = QFileInfo(pfad).canonicalFilePath();
    return echt.isEmpty() ? pfad : echt;
}

Beiname leereDateiDaneben(const QString& ziel, const QString& vorbild) {
    return neueDatei(ziel, vorbild, false);
}

Beiname kopieDaneben(const QString& ziel, const QString& vorbild) {
    return neueDatei(ziel, vorbild, true);
}

QString nameFuerAltes(const QString& ziel) {
    for (int i = 0;; ++i) {
        const QString name = nameDaneben(ziel, i);
        struct stat angaben {};
        if (::lstat(QFile::encodeName(name).constData(), &angaben) != 0) return name;
    }
}

void ganzSchreiben(int fd, const char* daten, qint64 anzahl, const QString& pfad) {
    for (qint64 fertig = 0; fertig < anzahl;) {
        const ssize_t n = ::write(fd, daten + fertig, size_t(anzahl - fertig));
        if (n < 0) systemfehler(pfad, QStringLiteral("geschrieben"));
        fertig += n;
    }
}

void aufPlatteBringen(const QString& pfad) {
    const Griff griff(::open(QFile::encodeName(pfad).constData(), O_RDWR | O_CLOEXEC));
    if (!griff.offen() || ::fsync(*griff) != 0) systemfehler(pfad, QStringLiteral("geschrieben"));
}

void ordnerAufPlatteBringen(const QString& pfad) {
    const Griff ordner(::open(QFile::encodeName(QFileInfo(pfad).absolutePath()).constData(),
                              O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (ordner.offen()) ::fsync(*ordner);
}

}  // namespace engine
