// The safe swap of a file.
#include "engine/datei/austausch.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>

#include "base/atempause.h"
#include "base/fehler.h"

namespace engine {
namespace {

constexpr int kKopierBlock = 1 << 20;
constexpr int kVersucheFuerNamen = 100;

// A file descriptor that closes itself.
class Griff {
  public:
    explicit Griff(int fd) : fd_(fd) {}
    ~Griff() {
        if (fd_ >= 0) ::close(fd_);
    }
    Griff(const Griff&) = delete;
    Griff& operator=(const Griff&) = delete;
    int operator*() const { return fd_; }
    bool offen() const { return fd_ >= 0; }

  private:
    int fd_;
};

// The temporary file beside the original; removed unless it took the original's place.
class Beiname {
  public:
    explicit Beiname(QString pfad) : pfad_(std::move(pfad)) {}
    ~Beiname() {
        if (!pfad_.isEmpty()) QFile::remove(pfad_);
    }
    Beiname(const Beiname&) = delete;
    Beiname& operator=(const Beiname&) = delete;
    const QString& pfad() const { return pfad_; }
    void behalten() { pfad_.clear(); }

  private:
    QString pfad_;
};

[[noreturn]] void systemfehler(const QString& pfad, const QString& was) {
    const int grund = errno;
    const QString name = QFileInfo(pfad).fileName();
    if (grund == ENOSPC || grund == EDQUOT)
        throw EngineFehler(kDatentraegerVoll, QStringLiteral("Auf dem Datenträger ist nicht genug Platz, um die "
            "Datei '%1' zu schreiben. Schaffen Sie Platz und wählen Sie dann 'Wiederholen'.").arg(name));
    if (grund == EACCES || grund == EPERM || grund == EROFS)
        throw EngineFehler(kSchreibgeschuetzt, QStringLiteral("Die Datei '%1' oder ihr Ordner ist schreibgeschützt. "
            "Heben Sie den Schreibschutz auf und wählen Sie dann 'Wiederholen'.").arg(name));
    throw EngineFehler(kDateifehler, QStringLiteral("Die Datei '%1' kann nicht %2 werden: %3.")
        .arg(name, was, QString::fromLocal8Bit(std::strerror(grund))));
}

QString zielVon(const QString& pfad) {
    const QString echt = QFileInfo(pfad).canonicalFilePath();
    return echt.isEmpty() ? pfad : echt;
}

void kopieren(int von, int nach, const QString& pfad) {
    QByteArray block(kKopierBlock, Qt::Uninitialized);
    for (;;) {
        const ssize_t gelesen = ::read(von, block.data(), size_t(block.size()));
        if (gelesen == 0) return;
        if (gelesen < 0) systemfehler(pfad, QStringLiteral("gelesen"));
        for (ssize_t fertig = 0; fertig < gelesen;) {
            const ssize_t n = ::write(nach, block.constData() + fertig, size_t(gelesen - fertig));
            if (n < 0) systemfehler(pfad, QStringLiteral("geschrieben"));
            fertig += n;
        }
        Atempause();
    }
}

// A copy of `ziel` under a new name beside it, with the same mode and owner.
QString kopieDaneben(const QString& ziel) {
    const Griff alt(::open(QFile::encodeName(ziel).constData(), O_RDONLY | O_CLOEXEC));
    if (!alt.offen()) systemfehler(ziel, QStringLiteral("gelesen"));
    struct stat angaben {};
    if (::fstat(*alt, &angaben) != 0) systemfehler(ziel, QStringLiteral("gelesen"));
    for (int i = 0; i < kVersucheFuerNamen; ++i) {
        const QString name = QStringLiteral("%1.lindgarn-%2-%3").arg(ziel).arg(::getpid()).arg(i);
        const Griff neu(::open(QFile::encodeName(name).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (!neu.offen()) {
            if (errno == EEXIST) continue;
            systemfehler(ziel, QStringLiteral("geschrieben"));
        }
        Beiname beiname(name);
        kopieren(*alt, *neu, ziel);
        // The owner may only be changed by the superuser; a file that is ours keeps it anyway.
        if (::fchown(*neu, angaben.st_uid, angaben.st_gid) != 0 && ::fchown(*neu, uid_t(-1), angaben.st_gid) != 0)
            errno = 0;
        if (::fchmod(*neu, angaben.st_mode & 07777) != 0) systemfehler(ziel, QStringLiteral("geschrieben"));
        beiname.behalten();
        return name;
    }
    throw EngineFehler(kDateifehler, QStringLiteral("Neben der Datei '%1' kann keine neue Datei angelegt werden.").arg(ziel));
}

void aufPlatteBringen(const QString& pfad, int schalter) {
    const Griff griff(::open(QFile::encodeName(pfad).constData(), schalter | O_CLOEXEC));
    if (!griff.offen() || ::fsync(*griff) != 0) systemfehler(pfad, QStringLiteral("geschrieben"));
}

void standVergleichen(const QString& ziel, const Dateistand& stand) {
    if (dateistandLesen(ziel) == stand) return;
    throw EngineFehler(kDateiGeaendert, QStringLiteral("Die Datei '%1' wurde inzwischen von einem anderen Programm "
        "geändert. Sie wird nicht überschrieben. Öffnen Sie die Datenbank neu und wiederholen Sie den Vorgang.")
        .arg(QFileInfo(ziel).fileName()));
}

}  // namespace

Dateistand dateistandLesen(const QString& pfad) {
    struct stat angaben {};
    if (::stat(QFile::encodeName(pfad).constData(), &angaben) != 0)
        throw EngineFehler(kDateiFehlt, QStringLiteral("Die Datei '%1' ist nicht vorhanden oder nicht erreichbar.").arg(pfad));
    return {qint64(angaben.st_size), qint64(angaben.st_mtim.tv_sec) * 1'000'000'000 + angaben.st_mtim.tv_nsec,
            quint64(angaben.st_dev), quint64(angaben.st_ino)};
}

void schreibbarkeitPruefen(const QString& pfad) {
    const QString ziel = zielVon(pfad);
    const Griff griff(::open(QFile::encodeName(ziel).constData(), O_RDWR | O_CLOEXEC));
    if (!griff.offen()) systemfehler(ziel, QStringLiteral("geöffnet"));
    struct flock bereich {};
    bereich.l_type = F_WRLCK;
    bereich.l_whence = SEEK_SET;
    const bool fremdeSperre = ::fcntl(*griff, F_GETLK, &bereich) == 0 && bereich.l_type != F_UNLCK;
    const bool gesperrt = ::flock(*griff, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (fremdeSperre || gesperrt)
        throw EngineFehler(kDateiGesperrt, QStringLiteral("Die Datei '%1' ist in einem anderen Programm geöffnet. "
            "Schließen Sie sie dort und versuchen Sie es noch einmal.").arg(QFileInfo(ziel).fileName()));
    if (::access(QFile::encodeName(QFileInfo(ziel).absolutePath()).constData(), W_OK | X_OK) != 0)
        systemfehler(ziel, QStringLiteral("geschrieben"));
}

Dateistand dateiAustauschen(const QString& pfad, const Dateistand& stand,
                            const std::function<void(const QString&)>& schreiben,
                            const std::function<void(const QString&)>& pruefen) {
    const QString ziel = zielVon(pfad);
    standVergleichen(ziel, stand);
    schreibbarkeitPruefen(ziel);
    Beiname neu(kopieDaneben(ziel));
    schreiben(neu.pfad());
    aufPlatteBringen(neu.pfad(), O_RDWR);
    pruefen(neu.pfad());
    standVergleichen(ziel, stand);
    if (::rename(QFile::encodeName(neu.pfad()).constData(), QFile::encodeName(ziel).constData()) != 0)
        systemfehler(ziel, QStringLiteral("ersetzt"));
    neu.behalten();
    const Dateistand danach = dateistandLesen(ziel);
    // The swap is done; a folder that cannot be flushed is no reason to report a failure.
    const Griff ordner(::open(QFile::encodeName(QFileInfo(ziel).absolutePath()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (ordner.offen()) ::fsync(*ordner);
    return danach;
}

}  // namespace engine
