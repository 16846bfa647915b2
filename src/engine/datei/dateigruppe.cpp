// The change of several files.
#include "engine/datei/dateigruppe.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstdio>
#include <map>
#include <memory>

#include "base/fehler.h"
#include "engine/datei/vorgangsbuch.h"

namespace engine {
namespace {

QByteArray roh(const QString& pfad) {
    return QFile::encodeName(pfad);
}

bool vorhanden(const QString& pfad) {
    struct stat angaben {};
    return ::lstat(roh(pfad).constData(), &angaben) == 0;
}

[[noreturn]] void inzwischenDa(const QString& pfad) {
    throw EngineFehler(kDateiGeaendert,
                       QStringLiteral("Im Ordner ist inzwischen eine Datei '%1' entstanden. Sie wird nicht "
                                      "überschrieben. Öffnen Sie die Datenbank neu und wiederholen Sie den "
                                      "Vorgang.")
                           .arg(QFileInfo(pfad).fileName()));
}

// As long as the handle lives no other Lindgarn gets past this with the same file.
Griff schrittPruefen(const Gruppenschritt& schritt) {
    if (!schritt.stand) {
        if (vorhanden(schritt.ziel)) inzwischenDa(schritt.ziel);
        return Griff();
    }
    standVergleichen(schritt.ziel, *schritt.stand);
    Griff allein = schreibbarkeitPruefen(schritt.ziel);
    standVergleichen(schritt.ziel, *schritt.stand);
    return allein;
}

// Moves to a name that must be free; not every file system can look and move in one.
void verschiebenWennFrei(const QString& von, const QString& nach) {
    if (::renameat2(AT_FDCWD, roh(von).constData(), AT_FDCWD, roh(nach).constData(), RENAME_NOREPLACE) == 0)
        return;
    if (errno == EEXIST) inzwischenDa(nach);
    if (errno != EINVAL && errno != ENOSYS) systemfehler(nach, QStringLiteral("angelegt"));
    if (vorhanden(nach)) inzwischenDa(nach);
    if (::rename(roh(von).constData(), roh(nach).constData()) != 0)
        systemfehler(nach, QStringLiteral("angelegt"));
}

// The steps done so far, and the way back.
class Verlauf {
  public:
    void neueDatei(const QString& von, const QString& ziel) {
        verschiebenWennFrei(von, ziel);
        getan_.push_back({ziel, QString()});
    }

    void ersetzen(const QString& von, const QString& ziel, const QString& alt) {
        // A second name keeps the old content while the first one changes hands in one step.
        const bool zweiterName = ::link(roh(ziel).constData(), roh(alt).constData()) == 0;
        if (!zweiterName && ::rename(roh(ziel).constData(), roh(alt).constData()) != 0)
            systemfehler(ziel, QStringLiteral("ersetzt"));
        getan_.push_back({ziel, alt});
        if (::rename(roh(von).constData(), roh(ziel).constData()) != 0)
            systemfehler(ziel, QStringLiteral("ersetzt"));
    }

    void entfernen(const QString& ziel, const QString& alt) {
        if (::rename(roh(ziel).constData(), roh(alt).constData()) != 0)
            systemfehler(ziel, QStringLiteral("gelöscht"));
        getan_.push_back({ziel, alt});
    }

    // There is no way back from here. An old file that cannot be removed now is in nobody's way.
    void abschliessen() {
        for (const Schritt& schritt : getan_)
            if (!schritt.alt.isEmpty()) ::unlink(roh(schritt.alt).constData());
    }

    // Undoes the steps, the last one first. False when one of them could not be undone; the others are.
    bool zuruecknehmen() {
        bool alle = true;
        for (auto schritt = getan_.rbegin(); schritt != getan_.rend(); ++schritt)
            alle = zuruecknehmen(*schritt) && alle;
        return alle;
    }

  private:
    struct Schritt {
        QString ziel;
        QString alt;  // where the old content is; empty for a file that was not there
    };

    static bool zuruecknehmen(const Schritt& schritt) {
        if (schritt.alt.isEmpty()) return ::unlink(roh(schritt.ziel).constData()) == 0 || errno == ENOENT;
        if (::rename(roh(schritt.alt).constData(), roh(schritt.ziel).constData()) != 0) return false;
        // Two names of one file: the renaming has nothing to do and leaves both.
        return !vorhanden(schritt.alt) || ::unlink(roh(schritt.alt).constData()) == 0;
    }

    std::vector<Schritt> getan_;
};

QString nameVon(const QString& pfad) {
    return pfad.isEmpty() ? QString() : QFileInfo(pfad).fileName();
}

// Where the old content of each step's file will be kept; empty for a file that is not there yet.
std::vector<QString> beinamenWaehlen(const std::vector<Gruppenschritt>& schritte) {
    std::vector<QString> alte;
    alte.reserve(schritte.size());
    for (const Gruppenschritt& schritt : schritte)
        alte.push_back(schritt.stand ? nameFuerAltes(schritt.ziel) : QString());
    return alte;
}

// One book for each folder, which speaks of its own files alone.
using Buecher = std::vector<std::unique_ptr<Vorgangsbuch>>;

// What a file is called while its change goes on is refuse only when no book speaks of it. So there is one
// for every change, and it stays while the way back has not been gone to its end.
void buecherFuehren(Buecher& buecher, const std::vector<Gruppenschritt>& schritte,
                    const std::vector<QString>& alte) {
    std::map<QString, std::vector<Buchung>> buchungen;
    for (size_t i = 0; i < schritte.size(); ++i) {
        const QString neu = schritte[i].neu.pfad();
        struct stat angaben {};
        if (!neu.isEmpty() && ::lstat(roh(neu).constData(), &angaben) != 0)
            systemfehler(schritte[i].ziel, QStringLiteral("ersetzt"));
        const QFileInfo ziel(schritte[i].ziel);
        buchungen[ziel.absolutePath()].push_back(
            {ziel.fileName(), nameVon(alte[i]), quint64(angaben.st_ino)});
    }
    for (const auto& [ordner, liste] : buchungen)
        buecher.push_back(std::make_unique<Vorgangsbuch>(ordner, liste));
}

void schritteTun(std::vector<Gruppenschritt>& schritte, const std::vector<QString>& alte, Verlauf& verlauf) {
    for (size_t i = 0; i < schritte.size(); ++i) {
        Gruppenschritt& schritt = schritte[i];
        // Looked at once more, since the steps before it took their time.
        const Griff allein = schrittPruefen(schritt);
        const bool loeschen = schritt.neu.pfad().isEmpty();
        if (loeschen)
            verlauf.entfernen(schritt.ziel, alte[i]);
        else if (schritt.stand)
            verlauf.ersetzen(schritt.neu.pfad(), schritt.ziel, alte[i]);
        else
            verlauf.neueDatei(schritt.neu.pfad(), schritt.ziel);
        schritt.neu.behalten();
    }
}

}  // namespace

void gruppePruefen(const std::vector<Gruppenschritt>& schritte) {
    for (const Gruppenschritt& schritt : schritte) schrittPruefen(schritt);
}

void gruppeAustauschen(std::vector<Gruppenschritt> schritte) {
    gruppePruefen(schritte);
    const std::vector<QString> alte = beinamenWaehlen(schritte);
    Buecher buecher;
    Verlauf verlauf;
    try {
        buecherFuehren(buecher, schritte, alte);
        schritteTun(schritte, alte, verlauf);
        for (const auto& buch : buecher) buch->abschliessen();
    } catch (...) {
        // What could not be put back now is put back by the books at the next start.
        if (verlauf.zuruecknehmen())
            for (const auto& buch : buecher) buch->verwerfen();
        throw;
    }
    verlauf.abschliessen();
}

}  // namespace engine
