// Formulas of BIFF5.
#include "engine/excel/formeln5.h"

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/excel/bytes.h"
#include "engine/excel/satzfolge.h"
#include "engine/excel/tabellenorte.h"
#include "engine/excel/verweisbau.h"
#include "engine/excel/zeilenindex.h"

namespace excel {
namespace {

constexpr quint8 kEigenesBlatt = 0x03;
constexpr int kErstesBlatt = 11;  // in a token of a 3-D reference
constexpr int kLetztesBlatt = 13;

// The number of bytes of the token at `ab`; 0 for an unknown one.
int zeichengroesse(QByteArrayView f, qsizetype ab) {
    quint8 z = u8(f, ab);
    if (z >= 0x60)
        z -= 0x40;
    else if (z >= 0x40)
        z -= 0x20;
    if (z == 0x01 || z == 0x02) return 5;
    if (z >= 0x03 && z <= 0x16) return 1;
    switch (z) {
        case 0x17:
            return 2 + u8(f, ab + 1);
        case 0x19:
            return u8(f, ab + 1) & 0x04 ? 4 + 2 * (u16(f, ab + 2) + 1) : 4;
        case 0x1C:
        case 0x1D:
            return 2;
        case 0x1E:
        case 0x21:
        case 0x29:
        case 0x2E:
        case 0x2F:
            return 3;
        case 0x1F:
            return 9;
        case 0x20:
            return 8;
        case 0x22:
        case 0x24:
        case 0x2A:
        case 0x2C:
            return 4;
        case 0x23:
            return 15;
        case 0x25:
        case 0x26:
        case 0x27:
        case 0x28:
        case 0x2B:
        case 0x2D:
            return 7;
        case 0x39:
            return 25;
        case 0x3A:
        case 0x3C:
            return 18;
        case 0x3B:
        case 0x3D:
            return 21;
        default:
            return 0;
    }
}

[[noreturn]] void unverstanden() {
    throw EngineFehler(
        kSystemgrenze,
        QStringLiteral("Ein Tabellenblatt dieser Arbeitsmappe von Excel 5/95 kann nicht gelöscht werden, "
                       "weil eine Formel nicht verstanden wird. Löschen Sie das Blatt in Excel."));
}

bool istBlattverweis(quint8 zeichen) {
    const quint8 z = zeichen & 0x1F;
    return (zeichen & 0x60) != 0 && z >= 0x1A && z <= 0x1D;
}

// Adjusts the tokens in [ab, ab + laenge) of `bytes`; true when any changed.
bool formelAnpassen(QByteArray& bytes, qsizetype ab, qsizetype laenge, int weg) {
    bool geaendert = false;
    const qsizetype ende = ab + laenge;
    if (laenge < 0 || ende > bytes.size()) unverstanden();
    while (ab < ende) {
        const int groesse = zeichengroesse(QByteArrayView(bytes).first(ende), ab);
        if (groesse == 0 || ab + groesse > ende) unverstanden();
        if (istBlattverweis(u8(bytes, ab)) && qint16(u16(bytes, ab + 1)) < 0) {
            const Blattpaar alt{u16(bytes, ab + kErstesBlatt), u16(bytes, ab + kLetztesBlatt)};
            const Blattpaar neu = nachVerlust(alt, weg);
            if (neu.erstes != alt.erstes || neu.letztes != alt.letztes) {
                setzen<quint16>(bytes, ab + kErstesBlatt, neu.erstes);
                setzen<quint16>(bytes, ab + kLetztesBlatt, neu.letztes);
                geaendert = true;
            }
        }
        ab += groesse;
    }
    return geaendert;
}

struct Formelort {
    int laenge;
    int zeichen;
};

// Where a record of this type has the length of its tokens and the tokens; {0, 0} for a type without any.
Formelort formelort(quint16 typ) {
    switch (typ) {
        case kFormula:
        case kFormulaBiff3:
        case kFormulaBiff4:
            return {20, 22};
        case kArray:
            return {12, 14};
        case kShrfmla:
            return {8, 10};
        case kChartlink:
            return {6, 8};
        default:
            return {0, 0};
    }
}

void teilstromAnpassen(Stueck& stueck, int weg) {
    Satzfolge folge(stueck.bytes);
    for (Satzsicht satz; folge.naechster(satz);) {
        const Formelort ort = formelort(satz.typ);
        if (ort.zeichen == 0 || satz.daten.size() < ort.zeichen) continue;
        Atempause();
        QByteArray daten = satz.daten.toByteArray();
        if (!formelAnpassen(daten, ort.zeichen, u16(daten, ort.laenge), weg)) continue;
        const qsizetype weiter = satz.ende();
        stueck.bytes.replace(satz.ort + kSatzkopf, daten.size(), daten);
        folge = Satzfolge(stueck.bytes, weiter);
    }
}

// The new content of an EXTERNSHEET; none when it stays.
std::optional<QByteArray> eintragErsetzt(const Mappe& mappe, QByteArrayView daten, const QString& alt,
                                         const std::optional<QString>& neu) {
    if (daten.size() < 2 || u8(daten, 1) != kEigenesBlatt || u8(daten, 0) > daten.size() - 2) return {};
    if (!namenGleich(mappe.codeseite().lesen(daten.sliced(2, u8(daten, 0))), alt)) return {};
    if (!neu) return QByteArray::fromHex("0104");
    const QByteArray name = namenBytes(mappe, *neu);
    return QByteArray(1, char(name.size())).append(char(kEigenesBlatt)).append(name);
}

}  // namespace

void formelnNachVerlust(Mappe& mappe, int weg) {
    for (Stueck& stueck : mappe.stuecke()) teilstromAnpassen(stueck, weg);
    for (const Definition& d : definitionenLesen(mappe))
        if (!d.formel.isEmpty()) formelAnpassen(mappe.daten(d.satz), d.formelort, d.formel.size(), weg);
}

void blattnamenErsetzen(Mappe& mappe, const QString& alt, const std::optional<QString>& neu) {
    for (size_t i = 0; i < mappe.globale().size(); ++i)
        if (mappe.globale()[i].typ == kExternsheet)
            if (const auto daten = eintragErsetzt(mappe, mappe.globale()[i].daten, alt, neu))
                mappe.daten(i) = *daten;
    for (Stueck& stueck : mappe.stuecke()) {
        Satzfolge folge(stueck.bytes);
        for (Satzsicht satz; folge.naechster(satz);) {
            if (satz.typ != kExternsheet) continue;
            const auto daten = eintragErsetzt(mappe, satz.daten, alt, neu);
            if (!daten) continue;
            const qsizetype ort = satz.ort;
            const qsizetype bisher = satz.daten.size();
            stueck.bytes.replace(ort + kSatzkopf, bisher, *daten);
            setzen<quint16>(stueck.bytes, ort + 2, quint16(daten->size()));
            indexDehnen(stueck.bytes, stueck.ort, mappe.biff8(), ort + kSatzkopf + bisher,
                        daten->size() - bisher);
            folge = Satzfolge(stueck.bytes, ort + kSatzkopf + daten->size());
        }
    }
}

}  // namespace excel
