// What travels with a copied column of a workbook: its header text and its number format.
#pragma once

#include <QByteArray>
#include <QString>

namespace excel {

struct Spalteneigenes {
    int nummer = 0;  // of the number format
    QString format;  // its text; empty for a built-in one without a text
    QString kopf;    // the header cell, where the field's name is not it
    bool operator==(const Spalteneigenes&) const = default;
};

QByteArray spalteneigenesSchreiben(const Spalteneigenes& eigenes);
// False for bytes that are none.
bool spalteneigenesLesen(QByteArrayView bytes, Spalteneigenes& eigenes);

}  // namespace excel
