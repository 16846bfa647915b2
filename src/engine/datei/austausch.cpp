// The safe swap of a file.
#include "engine/datei/austausch.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <optional>

#include "base/fehler.h"
#include "engine/datei/platte.h"

namespace engine {
namespace {

std::optional<Dateistand> standVon(const QString& pfad) {
    struct stat angaben {};
    if (::stat(QFile::encodeName(pfad).constData(), &angaben) != 0 || !S_ISREG(angaben.st_mode))
        return std::nullopt;
    return Dateistand{qint64(angaben.st_size),
                      qint64(angaben.st_mtim.tv_sec) * 1'000'000'000 + angaben.st_mtim.tv_nsec,
                      quint64(angaben.st_dev), quint64(angaben.st_ino)};
}

}  // namespace

Dateistand dateistandLesen(const QString& pfad) {
    if (const auto stand = standVon(pfad)) return *stand;
    if (QFileInfo::exists(pfad)) keineDatei(pfad);
    throw EngineFehler(kDateiFehlt,
                       QStringLiteral("Die Datei '%1' ist nicht vorhanden oder nicht erreichbar.").arg(pfad));
}

void standVergleichen(const QString& ziel, const Dateistand& stand) {
    if (dateistandLesen(ziel) == stand) return;
    throw EngineFehler(kDateiGeaendert,
                       QStringLiteral("Die Datei '%1' wurde inzwischen von einem anderen Programm "
                                      "geändert. Sie wird nicht überschrieben. Öffnen Sie die Datenbank neu "
                                      "und wiederholen Sie den Vorgang.")
                           .arg(QFileInfo(ziel).fileName()));
}

Griff schreibbarkeitPruefen(const QString& pfad) {
    const QString ziel = zielVon(pfad);
    Griff griff(::open(QFile::encodeName(ziel).constData(), O_RDWR | O_CLOEXEC));
    if (!griff.offen()) systemfehler(ziel, QStringLiteral("geöffnet"));
    struct flock bereich {};
    bereich.l_type = F_WRLCK;
    bereich.l_whence = SEEK_SET;
    const bool fremdeSperre = ::fcntl(*griff, F_GETLK, &bereich) == 0 && bereich.l_type != F_UNLCK;
    const bool gesperrt = ::flock(*griff, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (fremdeSperre || gesperrt)
        throw EngineFehler(kDateiGesperrt,
                           QStringLiteral("Die Datei '%1' ist in einem anderen Programm geöffnet. "
                                          "Schließen Sie sie dort und versuchen Sie es noch einmal.")
                               .arg(QFileInfo(ziel).fileName()));
    if (::access(QFile::encodeName(QFileInfo(ziel).absolutePath()).constData(), W_OK | X_OK) != 0)
        systemfehler(ziel, QStringLiteral("geschrieben"));
    return griff;
}

Dateistand dateiAustauschen(const QString& pfad, const Dateistand& stand,
                            const std::function<void(const QString&)>& schreiben,
                            const std::function<void(const QString&)>& pruefen) {
    const QString ziel = zielVon(pfad);
    standVergleichen(ziel, stand);
    schreibbarkeitPruefen(ziel);
    Beiname neu = kopieDaneben(ziel, ziel);
    schreiben(neu.pfad());
    aufPlatteBringen(neu.pfad());
    pruefen(neu.pfad());
    const Dateistand fertig = dateistandLesen(neu.pfad());
    // Nobody gets between the last look and the renaming who looks as we do.
    const Griff allein = schreibbarkeitPruefen(ziel);
    standVergleichen(ziel, stand);
    if (::rename(QFile::encodeName(neu.pfad()).constData(), QFile::encodeName(ziel).constData()) != 0)
        systemfehler(ziel, QStringLiteral("ersetzt"));
    neu.behalten();
    // The change is made: from here on nothing may be told as if it had failed.
    ordnerAufPlatteBringen(ziel);
    return standVon(ziel).value_or(fertig);
}

}  // namespace engine
