// Page 0: which format, which key, which password.
#include <cmath>

#include "base/fehler.h"
#include "engine/jet/bytes.h"
#include "engine/jet/kopf.h"

namespace jet {
namespace {

constexpr int kMaskeAb = 0x18;
constexpr int kPasswortAb = 0x42;
constexpr int kAngelegtAb = 0x72;

[[noreturn]] void nichtLesbar(const QString& grund) {
    throw EngineFehler(kDateiNichtLesbar, grund);
}

int versionPruefen(const Sicht& roh) {
    const bool jet = roh.teil(4, 15) == QByteArrayView("Standard Jet DB", 15);
    const bool ace = roh.teil(4, 15) == QByteArrayView("Standard ACE DB", 15);
    if (roh.u32(0) != 0x100 || (!jet && !ace))
        nichtLesbar(
            u"Die Datei ist keine Access-Datenbank. Wählen Sie eine Datei, die Access 97 bis 2003 "
            u"gespeichert hat."_qs);
    const int version = roh.u8(0x14);
    if (version == 4 || version > 6)
        nichtLesbar(
            u"Die Datei stammt aus einer unbekannten Fassung von Access. Speichern Sie sie in Access "
            u"im Format Access 2002-2003."_qs);
    return version;
}

// The pattern over the password of Jet 4: the whole days of the creation date.
quint32 passwortmuster(double angelegt) {
    if (!(std::abs(angelegt) < 2147483648.0)) return 0;
    return quint32(qint32(angelegt));
}

QString passwortLesen(const Sicht& kopf, const Format& format, double angelegt) {
    QByteArray bytes = kopf.teil(kPasswortAb, format.passwortLaenge).toByteArray();
    if (!format.jet4) return namenLesen(format, bytes.left(qstrnlen(bytes.constData(), bytes.size())));
    const quint32 muster = passwortmuster(angelegt);
    for (int i = 0; i < bytes.size(); ++i) bytes[i] = char(quint8(bytes[i]) ^ quint8(muster >> 8 * (i % 4)));
    QString text = namenLesen(format, bytes);
    const qsizetype ende = text.indexOf(QChar(0));
    return ende < 0 ? text : text.left(ende);
}

}  // namespace

const Format& formatErkennen(QByteArrayView anfang) {
    if (anfang.size() < 0x98)
        throw EngineFehler(kBeschaedigt,
                           u"Die Datei ist leer oder zu kurz für eine Access-Datenbank. Verwenden Sie eine "
                           u"Sicherungskopie."_qs);
    const int version = versionPruefen(Sicht(anfang, u"Dateikopf", 0));
    return version == 0 ? kJet3 : version == 1 ? kJet4 : kAce;
}

QByteArray kopfEntmaskieren(const Format& format, QByteArrayView anfang) {
    QByteArray klar = anfang.first(0x98).toByteArray();
    rc4(QByteArrayView("\xC7\xDA\x39\x6B", 4), klar.data() + kMaskeAb, format.maskeLaenge);
    return klar;
}

Kopf kopfLesen(QByteArrayView anfang) {
    const Format& format = formatErkennen(anfang);
    const QByteArray klar = kopfEntmaskieren(format, anfang);
    const Sicht sicht(klar, u"Dateikopf", 0);
    Kopf kopf;
    kopf.version = sicht.u8(0x14);
    if (sicht.u32(0x20) != kSeiteObjekte)
        nichtLesbar(
            u"Die Datei ist keine Datenbank von Access 97 bis 2003. Speichern Sie sie in Access im "
            u"Format Access 2002-2003."_qs);
    kopf.codepage = sicht.u16(0x3C) ? sicht.u16(0x3C) : quint16(1252);
    kopf.schluessel = sicht.u32(0x3E);
    kopf.sortierung = sicht.u16(format.jet4 ? 0x6E : 0x3A);
    kopf.sortVersion = format.jet4 ? sicht.u8(0x71) : quint8(0);
    kopf.angelegt = format.jet4 ? sicht.f64(kAngelegtAb) : 0;
    kopf.passwort = passwortLesen(sicht, format, kopf.angelegt);
    return kopf;
}

void passwortPruefen(const Kopf& kopf, const QString& passwort) {
    if (kopf.passwort.isEmpty() || kopf.passwort == passwort) return;
    if (passwort.isEmpty())
        throw EngineFehler(kPasswortFalsch,
                           u"Die Datenbank ist mit einem Passwort geschützt. Geben Sie das Passwort ein."_qs);
    throw EngineFehler(kPasswortFalsch,
                       u"Das Passwort ist nicht korrekt. Achten Sie auf Groß- und Kleinschreibung."_qs);
}

}  // namespace jet
