// Processes by number and beginning.
#include "engine/datei/prozess.h"

#include <signal.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QFile>
#include <QSysInfo>
#include <cerrno>

namespace engine {
namespace {

quint64 beginnVon(qint64 nummer) {
    constexpr qsizetype kFeldHinterNamen = 19;  // the 22nd of all; the name, in brackets, is the second
    QFile stand(QStringLiteral("/proc/%1/stat").arg(nummer));
    if (!stand.open(QIODevice::ReadOnly)) return 0;
    const QByteArray text = stand.readAll();
    return text.mid(text.lastIndexOf(')') + 2).split(' ').value(kFeldHinterNamen).toULongLong();
}

// Eight letters and digits that stand for this computer.
QString rechnerkennung() {
    static const QString kennung = QString::fromLatin1(
        QCryptographicHash::hash(QSysInfo::machineUniqueId(), QCryptographicHash::Sha256).toHex().left(8));
    return kennung;
}

}  // namespace

Prozess eigenerProzess() {
    return {::getpid(), beginnVon(::getpid())};
}

bool laeuft(const Prozess& prozess) {
    if (::kill(pid_t(prozess.nummer), 0) != 0 && errno == ESRCH) return false;
    const quint64 beginn = beginnVon(prozess.nummer);
    return beginn == 0 || prozess.beginn == 0 || beginn == prozess.beginn;
}

QString prozesskennung(const Prozess& prozess) {
    return QStringLiteral("%1-%2-%3")
        .arg(rechnerkennung(), QString::number(prozess.nummer), QString::number(prozess.beginn));
}

QString prozessmuster() {
    return rechnerkennung() + QStringLiteral("-([0-9]{1,9})-([0-9]{1,18})");
}

}  // namespace engine
