// Fuzz target: any bytes as the undo book of a folder. A book of ours is followed to its end or left alone,
// no other file of the folder is lost, and none outside it is touched.
//
// The first byte says how far the change had come. In the rest, "$" stands for what is behind a file's name
// in the private names of a crashed program, and "@A" for the identity of a file: A, B and E of those below,
// the folder D in it, and N, which is ":E" outside.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "engine/datei/platte.h"
#include "engine/datei/prozess.h"
#include "engine/datei/vorgangsbuch.h"

namespace {

constexpr engine::Prozess kAbgestuerzter{999999998, 7};

struct Datei {
    ino_t knoten = 0;
    QByteArray inhalt;  // a folder has none
    bool operator==(const Datei&) const = default;
};
using Bestand = std::map<QByteArray, Datei>;

struct Ort {
    QTemporaryDir wurzel;
    QByteArray neben = QFile::encodeName(wurzel.path());
    QByteArray ordner = neben + "/ordner";
    Ort();
};

Ort& ort() {
    static Ort dieser;
    return dieser;
}

QByteArray beiname(const char* name, const char* nummer) {
    return name + QFile::encodeName(engine::beinamenanfang(QString())) +
           engine::prozesskennung(kAbgestuerzter).toLatin1() + '-' + nummer;
}

void schreiben(const QByteArray& pfad, const QByteArray& inhalt) {
    const engine::Griff griff(::open(pfad.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    engine::ganzSchreiben(*griff, inhalt.constData(), inhalt.size(), QString());
}

Ort::Ort() {
    if (!wurzel.isValid()) std::abort();
    schreiben(neben + "/:E", "daneben");
}

// A name without a folder means one where the process stands; that is beside the folder for as long as this
// lives.
class Daneben {
  public:
    Daneben() : vorher_(::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (::chdir(ort().neben.constData()) != 0) std::abort();
    }
    ~Daneben() {
        if (::fchdir(*vorher_) != 0) std::abort();
    }
    Daneben(const Daneben&) = delete;
    Daneben& operator=(const Daneben&) = delete;

  private:
    engine::Griff vorher_;
};

Bestand bestand(const QByteArray& ordner) {
    Bestand alles;
    const QDir::Filters filter = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QString& name : QDir(QFile::decodeName(ordner)).entryList(filter)) {
        const QByteArray roh = QFile::encodeName(name);
        struct stat angaben {};
        ::lstat((ordner + '/' + roh).constData(), &angaben);
        QFile datei(QFile::decodeName(ordner + '/' + roh));
        if (S_ISREG(angaben.st_mode) && !datei.open(QIODevice::ReadOnly)) std::abort();
        alles[roh] = {angaben.st_ino, datei.isOpen() ? datei.readAll() : QByteArray()};
    }
    return alles;
}

// A is replaced, B is new, C goes; E is nobody's business. Each bit of `stand` is a step that was taken.
void ordnerAnlegen(int stand) {
    QDir(QFile::decodeName(ort().ordner)).removeRecursively();
    ::mkdir(ort().ordner.constData(), 0700);
    ::mkdir((ort().ordner + "/D").constData(), 0700);
    const auto in = [](const QByteArray& name) { return ort().ordner + '/' + name; };
    schreiben(in("A"), "altes A");
    schreiben(in("E"), "E");
    schreiben(in(beiname("A", "0")), "neues A");
    if (stand & 1) {
        ::rename(in("A").constData(), in(beiname("A", "1")).constData());
        if (stand & 2) ::rename(in(beiname("A", "0")).constData(), in("A").constData());
        if (stand & 4) ::link(in(beiname("A", "1")).constData(), in("A").constData());
    }
    schreiben(in(stand & 8 ? QByteArray("B") : beiname("B", "0")), "neues B");
    schreiben(in(stand & 16 ? beiname("C", "0") : QByteArray("C")), "altes C");
    if (stand & 32) schreiben(in(beiname("D", "0")), "an der Stelle eines Ordners");
    if (stand & 64) schreiben(in(beiname(":E", "0")), "mit Doppelpunkt");
}

QByteArray ausgefuellt(QByteArray text) {
    const auto knotenEinsetzen = [&](const char* zeichen, const QByteArray& pfad) {
        struct stat angaben {};
        ::lstat(pfad.constData(), &angaben);
        text.replace(zeichen, QByteArray::number(quint64(angaben.st_ino)));
    };
    text.replace("$", beiname("", ""));
    knotenEinsetzen("@A", ort().ordner + "/A");
    knotenEinsetzen("@B", ort().ordner + "/B");
    knotenEinsetzen("@D", ort().ordner + "/D");
    knotenEinsetzen("@E", ort().ordner + "/E");
    knotenEinsetzen("@N", ort().neben + "/:E");
    return text;
}

bool istBeiname(const QByteArray& name) {
    return name.contains(beiname("", "").constData());
}

// Whether the book says of this file that it is new.
bool giltAlsNeu(const QByteArray& buch, const QByteArray& name, ino_t knoten) {
    for (const QJsonValue wert : QJsonDocument::fromJson(buch).array())
        if (QFile::encodeName(wert[u"ziel"].toString()) == name &&
            wert[u"knoten"].toString().toULongLong() == quint64(knoten))
            return true;
    return false;
}

void verlangen(bool erfuellt, const char* was, const QByteArray& name = QByteArray()) {
    if (erfuellt) return;
    std::fprintf(stderr, "%s: %s\n", was, name.constData());
    std::abort();
}

void nichtsVerloren(const Bestand& vorher, const Bestand& nachher, const QByteArray& buch) {
    for (const auto& [name, datei] : vorher) {
        if (istBeiname(name) || name.endsWith(".vorgang")) continue;
        const auto fund = nachher.find(name);
        const bool bleibt = fund != nachher.end() && fund->second == datei;
        verlangen(bleibt || giltAlsNeu(buch, name, datei.knoten), "verloren", name);
    }
}

// A file that is new under its name was put back from what the crashed program had kept.
void nichtsErfunden(const Bestand& vorher, const Bestand& nachher) {
    for (const auto& [name, datei] : nachher) {
        const auto gleiche = vorher.find(name);
        if (gleiche != vorher.end() && gleiche->second == datei) continue;
        bool zurueck = false;
        for (const auto& [alt, inhalt] : vorher)
            zurueck = zurueck || (istBeiname(alt) && alt.startsWith(name + '.') && inhalt == datei);
        verlangen(zurueck, "erfunden", name);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* daten, size_t groesse) {
    if (groesse == 0) return 0;
    ordnerAnlegen(daten[0]);
    const QByteArray text =
        ausgefuellt(QByteArray(reinterpret_cast<const char*>(daten) + 1, qsizetype(groesse) - 1));
    const QByteArray buchname = "lindgarn-" + engine::prozesskennung(kAbgestuerzter).toLatin1() + ".vorgang";
    schreiben(ort().ordner + '/' + buchname, text);
    const Bestand vorher = bestand(ort().ordner);
    const Bestand aussen = bestand(ort().neben);

    {
        const Daneben daneben;
        engine::ueberbleibselRaeumen(QFile::decodeName(ort().ordner));
    }

    const Bestand nachher = bestand(ort().ordner);
    verlangen(bestand(ort().neben) == aussen, "außerhalb");
    nichtsVerloren(vorher, nachher, text);
    nichtsErfunden(vorher, nachher);
    if (nachher.count(buchname))
        verlangen(nachher == vorher, "halb gefolgt");
    else
        for (const auto& [name, datei] : nachher) verlangen(!istBeiname(name), "übrig", name);
    return 0;
}
