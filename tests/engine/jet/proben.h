// Finds the foreign sample files for the tests of this folder.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <memory>

#include "base/fehler.h"
#include "engine/jet/seiten.h"
#include "gemeinsam/tabellenprobe.h"

namespace proben {

// Path of a sample: `name` is "jet3-typen.mdb" or "daten/adressen-500.mdb".
inline QString pfad(const QString& name) {
    const QString wurzel = QStringLiteral(LINDGARN_FREMDDATEN);
    return wurzel + QString(name.contains(u'/') ? u"/"_qs : u"/mdb/beispiele/"_qs) + name;
}

inline QByteArray bytes(const QString& name) {
    QFile datei(pfad(name));
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

inline std::unique_ptr<jet::Seitendatei> oeffnen(const QString& name) {
    auto geraet = std::make_unique<QFile>(pfad(name));
    geraet->open(QIODevice::ReadOnly);
    return std::make_unique<jet::Seitendatei>(std::move(geraet));
}

inline const QStringList& alle() {
    static const QStringList namen = {
        "jet3-typen.mdb",      "jet3-relationen.mdb",         "jet3-index.mdb",
        "jet3-kodiert.mdb",    "jet4-relationen.mdb",         "jet4-kodiert.mdb",
        "jet4-passwort.mdb",   "jet4-memo-ole.mdb",           "jet4-verschobene-zeilen.mdb",
        "jet4-verknuepft.mdb", "jet4-geloeschte-spalten.mdb", "jet4-leer-adox.mdb",
        "ace-2007.accdb",      "daten/adressen-500.mdb",      "daten/adressen-10000.mdb"};
    return namen;
}

}  // namespace proben

// Skips the test, naming the file, when the sample is not on this machine.
#define PROBE_ODER_UEBERSPRINGEN(name)      \
    if (!QFile::exists(proben::pfad(name))) \
    GTEST_SKIP() << "Probe fehlt: " << proben::pfad(name).toStdString()
