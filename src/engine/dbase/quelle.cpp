// Bytes of a file or of memory.
#include "engine/dbase/quelle.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "base/fehler.h"

namespace dbase {
namespace {

engine::Dateistand standVon(int fd) {
    struct stat angaben {};
    if (::fstat(fd, &angaben) != 0) return {};
    return {qint64(angaben.st_size), qint64(angaben.st_mtim.tv_sec) * 1'000'000'000 + angaben.st_mtim.tv_nsec,
            quint64(angaben.st_dev), quint64(angaben.st_ino)};
}

}  // namespace

QByteArray Bytequelle::bytes(qint64 ab, qint64 anzahl) const {
    const qint64 da = std::clamp<qint64>(groesse() - ab, 0, std::max<qint64>(anzahl, 0));
    QByteArray ziel(da, Qt::Uninitialized);
    ziel.truncate(da > 0 ? lesen(ab, ziel.data(), da) : 0);
    return ziel;
}

Dateiquelle::Dateiquelle(const QString& pfad)
    : pfad_(pfad), griff_(engine::zumLesenOeffnen(pfad)), stand_(standVon(*griff_)) {}

qint64 Dateiquelle::lesen(qint64 ab, char* ziel, qint64 anzahl) const {
    qint64 fertig = 0;
    while (fertig < anzahl) {
        const ssize_t n = ::pread(*griff_, ziel + fertig, size_t(anzahl - fertig), off_t(ab + fertig));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) engine::systemfehler(pfad_, QStringLiteral("gelesen"));
        if (n == 0) break;
        fertig += n;
    }
    return fertig;
}

void Dateiquelle::unveraendertVerlangen() const {
    if (standVon(*griff_) == stand_) return;
    throw EngineFehler(kDateiGeaendert,
                       QStringLiteral("Die Datei '%1' wurde inzwischen von einem anderen Programm geändert. "
                                      "Öffnen Sie die Datenbank neu.")
                           .arg(QFileInfo(pfad_).fileName()));
}

qint64 Speicherquelle::lesen(qint64 ab, char* ziel, qint64 anzahl) const {
    if (ab < 0 || ab >= bytes_.size()) return 0;
    const qint64 n = std::min<qint64>(anzahl, bytes_.size() - ab);
    std::memcpy(ziel, bytes_.constData() + ab, size_t(n));
    return n;
}

}  // namespace dbase
