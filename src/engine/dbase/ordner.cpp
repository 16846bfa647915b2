// The files of the folder.
#include "engine/dbase/ordner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <filesystem>
#include <system_error>

namespace dbase {
namespace {

constexpr qint64 kMaxBeiblatt = 1 << 16;

bool gleich(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool enthaelt(const QStringList& namen, const QString& name) {
    return namen.contains(name, Qt::CaseInsensitive);
}

}  // namespace

QString stammVon(const QString& datei) {
    return datei.left(datei.lastIndexOf(u'.'));
}

QString endungVon(const QString& datei) {
    return datei.mid(datei.lastIndexOf(u'.') + 1);
}

bool istIndexdatei(const QString& datei) {
    static const QStringList kEndungen{QStringLiteral("mdx"), QStringLiteral("cdx"), QStringLiteral("inf"),
                                       QStringLiteral("ndx"), QStringLiteral("idx")};
    return enthaelt(kEndungen, endungVon(datei));
}

QString endungWie(const QString& vorbild, const QString& endung) {
    return vorbild == vorbild.toUpper() ? endung.toUpper() : endung.toLower();
}

Ordner::Ordner(const QString& pfad)
    : pfad_(pfad), dateien_(QDir(pfad).entryList(QDir::Files | QDir::System, QDir::Unsorted)) {
    std::sort(dateien_.begin(), dateien_.end());
    for (const QString& name : dateien_) nachName_[name.toCaseFolded()] << name;
}

// The files that are called so in any case of letters, in byte order.
QStringList Ordner::schreibungen(const QString& name) const {
    QStringList alle = nachName_.value(name.toCaseFolded());
    alle.removeIf([&](const QString& andere) { return !gleich(andere, name); });
    return alle;
}

QStringList Ordner::tabellendateien(QStringList* doppelte) const {
    QStringList namen;
    for (const QString& name : dateien_) {
        if (!gleich(endungVon(name), QStringLiteral("dbf")) || stammVon(name).isEmpty()) continue;
        if (schreibungen(name).first() == name)
            namen << name;
        else if (doppelte)
            *doppelte << name;
    }
    std::sort(namen.begin(), namen.end(),
              [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    return namen;
}

int Ordner::namenlose() const {
    int anzahl = 0;
    std::error_code fehler;
    const std::filesystem::path ordner(QFile::encodeName(pfad_).constData());
    for (std::filesystem::directory_iterator eintrag(ordner, fehler), ende; !fehler && eintrag != ende;
         eintrag.increment(fehler)) {
        const QByteArray roh = QByteArray::fromStdString(eintrag->path().filename().string());
        const QString name = QFile::decodeName(roh);
        if (gleich(endungVon(name), QStringLiteral("dbf")) && QFile::encodeName(name) != roh) ++anzahl;
    }
    return anzahl;
}

// Whether there is a table that is spelled as the file is.
bool Ordner::gehoertAnderer(const QString& datei) const {
    const QStringList tabellen = schreibungen(stammVon(datei) + QStringLiteral(".dbf"));
    return std::any_of(tabellen.begin(), tabellen.end(), [&](const QString& name) {
        return name != datei && stammVon(name) == stammVon(datei);
    });
}

QString Ordner::datei(const QString& stamm, const QString& endung) const {
    QString fund;
    for (const QString& name : schreibungen(stamm + u'.' + endung)) {
        if (name.startsWith(stamm)) return name;
        if (fund.isEmpty() && !gehoertAnderer(name)) fund = name;
    }
    return fund;
}

QByteArray Ordner::inhalt(const QString& stamm, const QString& endung) const {
    const QString name = datei(stamm, endung);
    QFile quelle(pfadVon(name));
    if (name.isEmpty() || !QFileInfo(quelle).isFile() || !quelle.open(QIODevice::ReadOnly)) return {};
    return quelle.read(kMaxBeiblatt);
}

QString Ordner::ueblicheEndung() const {
    const QStringList tabellen = tabellendateien();
    const auto gross = std::count_if(tabellen.begin(), tabellen.end(), [](const QString& name) {
        return endungVon(name) == QStringLiteral("DBF");
    });
    return gross * 2 > tabellen.size() ? QStringLiteral("DBF") : QStringLiteral("dbf");
}

QStringList Ordner::genannteIndexe(const QString& stamm) const {
    QStringList namen;
    const QList<QByteArray> zeilen = inhalt(stamm, QStringLiteral("inf")).split('\n');
    for (const QByteArray& zeile : zeilen) {
        const qsizetype gleichzeichen = zeile.indexOf('=');
        if (gleichzeichen < 0) continue;
        const QString genannt = QString::fromLatin1(zeile.mid(gleichzeichen + 1)).trimmed();
        const QString da = datei(stammVon(genannt), endungVon(genannt));
        if (!da.isEmpty() && istIndexdatei(da)) namen << da;
    }
    return namen;
}

QStringList Ordner::begleiter(const QString& stamm) const {
    QStringList namen;
    for (const char* endung : {"dbt", "fpt", "cpg", "mdx", "cdx", "inf"}) {
        const QString name = datei(stamm, QString::fromLatin1(endung));
        if (!name.isEmpty()) namen << name;
    }
    QStringList fremde;
    for (const QString& name : dateien_)
        if (gleich(endungVon(name), QStringLiteral("inf")) && !gleich(stammVon(name), stamm))
            fremde << genannteIndexe(stammVon(name));
    for (const QString& name : genannteIndexe(stamm))
        if (!enthaelt(fremde, name) && !namen.contains(name)) namen << name;
    return namen;
}

}  // namespace dbase
