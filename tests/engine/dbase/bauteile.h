// Builds the bytes of a table field by field, so that a test can bend any of them.
#pragma once

#include <QByteArray>
#include <QtEndian>
#include <vector>

namespace bauteile {

struct Feld {
    QByteArray name;
    char art;
    int laenge;
    int stellen = 0;
};

struct Tabelle {
    quint8 version = 0x03;
    quint8 sprachbyte = 0x02;
    std::vector<Feld> felder;
    std::vector<QByteArray> saetze;  // without the deletion mark, or one byte longer with it
    int satzlaenge = -1;             // as the header says; -1 for what is true
    int kopflaenge = -1;
    qint64 anzahl = -1;
    char feldende = 0x0D;
    QByteArray nachKopf;  // between the end mark of the fields and the records
    QByteArray ende = QByteArray(1, '\x1A');

    int breite() const {
        int summe = 1;
        for (const Feld& feld : felder) summe += feld.laenge;
        return summe;
    }

    QByteArray bytes() const {
        QByteArray t(32, '\0');
        t[0] = char(version);
        t[1] = 99;
        t[2] = 12;
        t[3] = 31;
        t[29] = char(sprachbyte);
        for (const Feld& feld : felder) {
            QByteArray f(32, '\0');
            f.replace(0, feld.name.size(), feld.name);
            f[11] = feld.art;
            f[16] = char(feld.laenge);
            f[17] = char(feld.stellen);
            t += f;
        }
        t += feldende;
        t += nachKopf;
        qToLittleEndian<quint32>(quint32(anzahl < 0 ? qint64(saetze.size()) : anzahl), t.data() + 4);
        qToLittleEndian<quint16>(quint16(kopflaenge < 0 ? t.size() : kopflaenge), t.data() + 8);
        qToLittleEndian<quint16>(quint16(satzlaenge < 0 ? breite() : satzlaenge), t.data() + 10);
        for (const QByteArray& satz : saetze)
            t += (satz.size() < breite() ? QByteArray(" ") : QByteArray()) + satz;
        return t + ende;
    }
};

}  // namespace bauteile
