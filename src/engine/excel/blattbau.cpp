// New sheets.
#include "engine/excel/blattbau.h"

#include <QLocale>
#include <algorithm>
#include <cmath>

#include "base/atempause.h"
#include "base/fehler.h"
#include "engine/excel/blattname.h"
#include "engine/excel/bytes.h"
#include "engine/excel/formate.h"
#include "engine/excel/ketten.h"
#include "engine/excel/spalteneigenes.h"
#include "engine/excel/stilbau.h"
#include "engine/excel/textbau.h"
#include "engine/excel/zahlenwerte.h"

namespace excel {
namespace {

constexpr int kMaxSpalten = 256;
constexpr int kMaxText8 = 32767;
constexpr int kMaxText5 = 255;
constexpr int kFormatDatum = 14;
constexpr int kFormatZeit = 21;
constexpr int kFormatDatumZeit = 22;
constexpr int kFormatText = 49;
constexpr quint8 kFehlerZahl = 0x24;  // #NUM!
constexpr int kZellkopf = 6;
constexpr qint32 kRkGrenze = 1 << 29;
const char16_t kWaehrungsformat[] = u"#,##0.00\\ [$€-407]";
const char16_t kWaehrungsformat5[] = u"#,##0.00\\ \"EUR\"";

const QByteArray kBof8 = QByteArray::fromHex("0908100000061000bb0dcc074100000006000000");
const QByteArray kBof5 = QByteArray::fromHex("0908080000051000bb0dcc07");
const QByteArray kFenster8 = QByteArray::fromHex("3e021200b60000000000400000000000000000000000");
const QByteArray kEnde = QByteArray::fromHex("0a000000");

[[noreturn]] void passtNicht(const QString& text) {
    throw EngineFehler(kSystemgrenze, text);
}

QString deutsch(qint64 zahl) {
    return QLocale(QLocale::German).toString(zahl);
}

// One row is the header's.
void zeilenzahlPruefen(const QString& tabelle, qint64 zeilen, bool biff8) {
    const int hoechstens = Mappe::maxZeilen(biff8) - 1;
    if (zeilen <= hoechstens) return;
    const QString rat =
        biff8 ? QStringLiteral("Verwenden Sie eine Access-Datenbank, oder teilen Sie die Tabelle auf.")
              : QStringLiteral("Speichern Sie die Arbeitsmappe im Format von Excel 97-2003.");
    passtNicht(QStringLiteral("Die Tabelle '%1' passt nicht in die Arbeitsmappe: Ein Tabellenblatt nimmt "
                              "höchstens %2 Datensätze auf. %3")
                   .arg(tabelle, deutsch(hoechstens), rat));
}

// How the values of one field become cells.
struct Spalte {
    QString name;
    int xf = 0;
    int xfDatum = -1, xfZeit = -1,
        xfDatumZeit = -1;  // instead of `xf` for dates without a format of their own
    int nullen = 0;        // a text of this many digits is a number shown with zeros
};

class Bau {
  public:
    Bau(Mappe& mappe, const engine::TabellenDef& def)
        : mappe_(mappe), def_(def), stile_(mappe), datum1904_(mappe.datum1904()) {
        if (mappe.biff8()) texte_.emplace(mappe);
        blattUmfangPruefen(def, mappe.biff8());
    }

    Neublatt bauen(engine::Zeilenquelle& quelle) {
        for (const engine::FeldDef& feld : def_.felder) spalten_.push_back(spalteFuer(feld));
        strom_ = mappe_.biff8() ? kBof8 : kBof5;
        const qsizetype masse = strom_.size();
        strom_.append(mappe_.biff8() ? kSatzkopf + 14 : kSatzkopf + 10, '\0');
        for (size_t i = 0; i < def_.felder.size(); ++i)
            text(int(i), stile_.allgemein(), kopfzelle(def_.felder[i]));
        for (engine::Zeile zeile; quelle.naechste(zeile);) {
            zeilenzahlPruefen(def_.name, ++zeile_, mappe_.biff8());
            for (size_t i = 0; i < zeile.size() && i < spalten_.size(); ++i) zelle(int(i), zeile[i]);
            Atempause();
        }
        masseSetzen(masse);
        strom_ += mappe_.biff8() ? kFenster8 : QByteArray::fromHex("3e020a00b600").append(8, '\0');
        strom_ += kEnde;
        if (texte_) texte_->eintragen(mappe_);
        stile_.abschliessen();
        return {std::move(strom_), zeile_, zellen_};
    }

  private:
    // The header of a copied column, where its field is still called after it.
    static QString kopfzelle(const engine::FeldDef& feld) {
        Spalteneigenes eigenes;
        const bool kopie = spalteneigenesLesen(feld.formatEigenes, eigenes) && !eigenes.kopf.isEmpty();
        return kopie && feldname(eigenes.kopf) == feld.name ? eigenes.kopf : feld.name;
    }

    Spalte spalteFuer(const engine::FeldDef& feld) {
        Spalte spalte;
        spalte.name = feld.name;
        spalte.xf = stile_.allgemein();
        Spalteneigenes eigenes;
        const bool kopie = spalteneigenesLesen(feld.formatEigenes, eigenes);
        const Formatangabe angabe = kopie ? formatDeuten(eigenes.nummer, eigenes.format) : Formatangabe();
        const auto wieDieQuelle = [&] { spalte.xf = stile_.mitFormat(eigenes.nummer, eigenes.format); };
        switch (feld.typ) {
            case dao::dbDate:
            case dao::dbTime:
                if (kopie && angabe.art == Formatart::Datum) {
                    wieDieQuelle();
                    break;
                }
                spalte.xfDatum = stile_.mitFormat(kFormatDatum);
                spalte.xfZeit = stile_.mitFormat(kFormatZeit);
                spalte.xfDatumZeit = stile_.mitFormat(kFormatDatumZeit);
                break;
            case dao::dbCurrency:
                if (kopie && angabe.art == Formatart::Waehrung)
                    wieDieQuelle();
                else
                    spalte.xf = stile_.mitFormat(
                        0, QString::fromUtf16(mappe_.biff8() ? kWaehrungsformat : kWaehrungsformat5));
                break;
            case dao::dbText:
            case dao::dbMemo:
                if (kopie && angabe.art == Formatart::Nullen) {
                    wieDieQuelle();
                    spalte.nullen = angabe.nullen;
                } else if (kopie && (eigenes.nummer == kFormatText || eigenes.format == u"@")) {
                    wieDieQuelle();
                }
                break;
            case dao::dbBoolean:
                break;
            default:
                if (kopie && angabe.art == Formatart::Zahl) wieDieQuelle();
        }
        return spalte;
    }

    void kopf(Satzart typ, int laenge, int spalte, int xf) {
        anhaengen<quint16>(strom_, typ);
        anhaengen<quint16>(strom_, quint16(kZellkopf + laenge));
        anhaengen<quint16>(strom_, quint16(zeile_));
        anhaengen<quint16>(strom_, quint16(spalte));
        anhaengen<quint16>(strom_, quint16(xf));
        ++zellen_;
    }

    void zahl(int spalte, int xf, double wert) {
        if (!std::isfinite(wert)) {
            boolerr(spalte, xf, kFehlerZahl, true);
            return;
        }
        const bool ganz =
            wert > -kRkGrenze && wert < kRkGrenze && wert == std::trunc(wert) && !std::signbit(wert);
        kopf(ganz ? kRk : kNumber, ganz ? 4 : 8, spalte, xf);
        if (ganz)
            anhaengen<quint32>(strom_, quint32(qint32(wert)) << 2 | 2);
        else
            anhaengen<double>(strom_, wert);
    }

    void boolerr(int spalte, int xf, quint8 wert, bool fehler) {
        kopf(kBoolerr, 2, spalte, xf);
        strom_.append(char(wert)).append(char(fehler));
    }

    [[noreturn]] void zuLang(int spalte, int grenze, const QString& rat) const {
        passtNicht(QStringLiteral(
                       "Ein Text im Feld '%1' der Tabelle '%2' passt nicht in die Arbeitsmappe: Eine Zelle "
                       "nimmt höchstens %3 Zeichen auf. %4")
                       .arg(spalten_[size_t(spalte)].name, def_.name, deutsch(grenze), rat));
    }

    void text(int spalte, int xf, const QString& text) {
        if (text.isEmpty()) return;
        if (!mappe_.biff8()) {
            text5(spalte, xf, text);
            return;
        }
        if (text.size() > kMaxText8)
            zuLang(spalte, kMaxText8,
                   QStringLiteral("Kürzen Sie den Text, oder verwenden Sie eine Access-Datenbank."));
        if (const auto nummer = texte_->nummer(text)) {
            kopf(kLabelsst, 4, spalte, xf);
            anhaengen<quint32>(strom_, *nummer);
            return;
        }
        const QByteArray bytes = zeichenBytes8(text);
        if (kZellkopf + 2 + bytes.size() > mappe_.maxSatz())
            zuLang(spalte, 4000,
                   QStringLiteral("Speichern Sie die Arbeitsmappe in Excel neu; ihre Texttafel ist "
                                  "beschädigt."));
        kopf(kLabel, int(2 + bytes.size()), spalte, xf);
        anhaengen<quint16>(strom_, quint16(text.size()));
        strom_ += bytes;
    }

    void text5(int spalte, int xf, const QString& text) {
        const auto bytes = mappe_.codeseite().schreiben(text);
        const bool ascii = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
        if (!bytes || (stile_.fremdeSchrift() && !ascii))
            passtNicht(QStringLiteral(
                           "Der Text '%1' im Feld '%2' der Tabelle '%3' enthält Zeichen, die es in dieser "
                           "Arbeitsmappe von Excel 5/95 nicht gibt. Speichern Sie die Arbeitsmappe im "
                           "Format von Excel 97-2003.")
                           .arg(text.left(40), spalten_[size_t(spalte)].name, def_.name));
        if (bytes->size() > kMaxText5)
            zuLang(spalte, kMaxText5,
                   QStringLiteral("Speichern Sie die Arbeitsmappe im Format von Excel 97-2003."));
        kopf(kLabel, int(2 + bytes->size()), spalte, xf);
        anhaengen<quint16>(strom_, quint16(bytes->size()));
        strom_ += *bytes;
    }

    // What the date system does not hold stands as its text.
    void datum(int spalte, DatumZeit wert) {
        const Spalte& s = spalten_[size_t(spalte)];
        const std::optional<double> seriell = seriellAus(wert, datum1904_);
        if (!seriell) {
            text(spalte, stile_.allgemein(), datumText(wert));
            return;
        }
        int xf = s.xf;
        if (s.xfDatum >= 0)
            xf = *seriell < 1 ? s.xfZeit : *seriell == std::trunc(*seriell) ? s.xfDatum : s.xfDatumZeit;
        zahl(spalte, xf, *seriell);
    }

    void zelle(int spalte, const Wert& wert) {
        const Spalte& s = spalten_[size_t(spalte)];
        switch (wert.art()) {
            case Wert::Art::Leer:
            case Wert::Art::Null:
                return;
            case Wert::Art::Wahrheit:
                boolerr(spalte, s.xf, wert.wahrheit(), false);
                return;
            case Wert::Art::Ganzzahl:
            case Wert::Art::Gleitzahl:
            case Wert::Art::Waehrung:
            case Wert::Art::Dezimal:
                zahl(spalte, s.xf, wert.alsZahl());
                return;
            case Wert::Art::DatumZeit:
                datum(spalte, wert.datumZeit());
                return;
            case Wert::Art::Text: {
                const auto hinterNullen =
                    s.nullen > 0 ? zahlHinterNullen(wert.text(), s.nullen) : std::nullopt;
                if (hinterNullen)
                    zahl(spalte, s.xf, *hinterNullen);
                else
                    text(spalte, s.xf, wert.text());
                return;
            }
            case Wert::Art::Bytes:
                passtNicht(
                    QStringLiteral("Das Feld '%1' der Tabelle '%2' enthält Binärdaten, die eine Arbeitsmappe "
                                   "nicht aufnimmt. Verwenden Sie eine Access-Datenbank.")
                        .arg(s.name, def_.name));
        }
    }

    // DIMENSIONS: first row, last row + 1, first column, last column + 1.
    void masseSetzen(qsizetype ort) {
        const bool biff8 = mappe_.biff8();
        setzen<quint16>(strom_, ort, kDimensions);
        setzen<quint16>(strom_, ort + 2, biff8 ? 14 : 10);
        setzen<quint16>(strom_, ort + (biff8 ? 8 : 6), quint16((zeile_ + 1) & 0xFFFF));
        if (biff8) setzen<quint16>(strom_, ort + 10, quint16((zeile_ + 1) >> 16));
        setzen<quint16>(strom_, ort + (biff8 ? 14 : 10), quint16(spalten_.size()));
    }

    Mappe& mappe_;
    const engine::TabellenDef& def_;
    Stilbau stile_;
    std::optional<Textbau> texte_;
    bool datum1904_;
    std::vector<Spalte> spalten_;
    QByteArray strom_;
    int zeile_ = 0;
    int zellen_ = 0;
};

}  // namespace

void blattUmfangPruefen(const engine::TabellenDef& def, bool biff8) {
    if (def.felder.size() > size_t(kMaxSpalten))
        passtNicht(
            QStringLiteral("Die Tabelle '%1' hat mehr als 256 Felder; mehr Spalten hat ein Tabellenblatt "
                           "von Excel nicht. Verwenden Sie eine Access-Datenbank.")
                .arg(def.name));
    zeilenzahlPruefen(def.name, def.zeilen, biff8);
}

Neublatt blattBauen(Mappe& mappe, const engine::TabellenDef& def, engine::Zeilenquelle& zeilen) {
    return Bau(mappe, def).bauen(zeilen);
}

}  // namespace excel
