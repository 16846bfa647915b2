// The one failure that every reader of this folder raises for damaged bytes.
#include "engine/jet/bytes.h"

#include "base/fehler.h"

namespace jet {

void beschaedigt(QStringView struktur, quint32 seite, qint64 stelle) {
    QString text = u"Die Datenbankdatei ist beschädigt (%1, Seite %2"_qs.arg(struktur.toString(),
                                                                             QString::number(seite));
    if (stelle >= 0) text += u", Stelle %1"_qs.arg(stelle);
    text +=
        u"). Verwenden Sie eine Sicherungskopie oder lassen Sie die Datei in Access komprimieren und "
        "reparieren.";
    throw EngineFehler(kBeschaedigt, text);
}

}  // namespace jet
