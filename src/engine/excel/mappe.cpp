// Cutting a workbook stream and putting it together again.
#include "engine/excel/mappe.h"

#include <algorithm>

#include "base/fehler.h"
#include "engine/excel/bytes.h"
#include "engine/excel/ketten.h"
#include "engine/excel/satzfolge.h"
#include "engine/excel/zeilenindex.h"

namespace excel {
namespace {

constexpr quint16 kVersion5 = 0x0500;
constexpr quint16 kVersion8 = 0x0600;
constexpr quint16 kArtGlobal = 0x0005;
constexpr int kBoundsheetKopf = 7;  // offset, visibility, kind, length of the name
constexpr int kUnicodeSeite = 1200;

// Sound files that are not for us: their number lets the text reach the user.
[[noreturn]] void nichtUnterstuetzt(const QString& text) {
    throw EngineFehler(kSystemgrenze, text);
}

void kopfPruefen(QByteArrayView strom) {
    Satzsicht bof;
    if (!Satzfolge(strom).naechster(bof)) keineArbeitsmappe();
    if (bof.typ == kBofBiff2 || bof.typ == kBofBiff3 || bof.typ == kBofBiff4)
        nichtUnterstuetzt(
            QStringLiteral("Arbeitsblätter von Excel 2 bis 4 können nicht bearbeitet werden. Speichern Sie "
                           "die Tabelle in Excel im Format 'Microsoft Excel-Arbeitsmappe (*.xls)'."));
    if (bof.typ != kBof || bof.daten.size() < 4) keineArbeitsmappe();
    const quint16 version = u16(bof.daten, 0);
    if ((version != kVersion5 && version != kVersion8) || u16(bof.daten, 2) != kArtGlobal)
        nichtUnterstuetzt(QStringLiteral(
            "Diese Art von Excel-Datei kann nicht bearbeitet werden. Speichern Sie die Tabelle "
            "in Excel im Format 'Microsoft Excel-Arbeitsmappe (*.xls)'."));
}

}  // namespace

void keineArbeitsmappe() {
    nichtUnterstuetzt(QStringLiteral(
        "Die Datei ist keine Arbeitsmappe von Excel 5 bis 2003, auch wenn sie so heißt. Öffnen "
        "Sie sie in Excel, und speichern Sie sie dort im Format 'Excel 97-2003-Arbeitsmappe "
        "(*.xls)'."));
}

QByteArray namenBytes(const Mappe& mappe, const QString& name) {
    if (mappe.biff8()) return zeichenBytes8(name);
    const auto bytes = mappe.codeseite().schreiben(name);
    if (!bytes)
        throw EngineFehler(
            kUngueltigerName,
            QStringLiteral("Der Name '%1' enthält Zeichen, die es in einer Arbeitsmappe von Excel 5/95 "
                           "nicht gibt. Wählen Sie einen anderen Namen, oder speichern Sie die Mappe im "
                           "Format von Excel 97-2003.")
                .arg(name));
    return *bytes;
}

Mappe::Mappe(QByteArray strom) : strom_(std::move(strom)) {
    kopfPruefen(strom_);
    biff8_ = u16(strom_, kSatzkopf) == kVersion8;
    globaleLesen();
    blaetterLesen();
    stueckeSchneiden();
}

void Mappe::globaleLesen() {
    globalEnde_ = teilstromEnde(strom_, 0);
    Satzfolge folge(strom_);
    Satzsicht satz;
    while (folge.naechster(satz) && (globalEnde_ < 0 || satz.ende() <= globalEnde_)) {
        // Looked for before the end is: encryption leaves nothing else to trust.
        if (satz.typ == kFilepass)
            nichtUnterstuetzt(
                QStringLiteral("Die Arbeitsmappe ist verschlüsselt. Heben Sie in Excel das Kennwort zum "
                               "Öffnen und den Schutz der Arbeitsmappe auf, und speichern Sie sie neu."));
        if (globalEnde_ < 0) continue;
        if (satz.typ == kCodepage && satz.daten.size() >= 2) codeseitennummer_ = u16(satz.daten, 0);
        global_.push_back({satz.typ, satz.daten.toByteArray()});
    }
    if (globalEnde_ < 0) beschaedigt();
    codeseite_ = Codeseite(std::max(0, codeseitennummer_));
}

void Mappe::blaetterLesen() {
    for (size_t i = 0; i < global_.size(); ++i) {
        const QByteArray& daten = global_[i].daten;
        if (global_[i].typ != kBoundsheet || daten.size() < kBoundsheetKopf) continue;
        Blatt blatt;
        blatt.satz = i;
        blatt.sichtbarkeit = u8(daten, 4) & 3;
        blatt.art = Blattart(u8(daten, 5));
        const int laenge = u8(daten, 6);
        if (!biff8_) {
            blatt.name = codeseite_.lesen(QByteArrayView(daten).sliced(
                kBoundsheetKopf, std::min<qsizetype>(laenge, daten.size() - kBoundsheetKopf)));
        } else if (daten.size() > kBoundsheetKopf) {
            const bool breit = u8(daten, kBoundsheetKopf) & 1;
            const int da = int(daten.size() - kBoundsheetKopf - 1) / (breit ? 2 : 1);
            blatt.name = zeichen8(daten, kBoundsheetKopf + 1, std::min(laenge, da), breit);
        }
        blaetter_.push_back(blatt);
    }
}

// The sheets' substreams in the order in which they stand, and the bytes between and behind them.
void Mappe::stueckeSchneiden() {
    std::vector<std::pair<qsizetype, size_t>> orte;
    for (size_t i = 0; i < blaetter_.size(); ++i)
        orte.emplace_back(u32(global_[blaetter_[i].satz].daten, 0), i);
    std::sort(orte.begin(), orte.end());
    const auto anhaengen = [&](qsizetype von, qsizetype bis) {
        stuecke_.push_back({von, QByteArray::fromRawData(strom_.constData() + von, bis - von)});
    };
    qsizetype ende = globalEnde_;
    for (const auto& [ort, nummer] : orte) {
        const qsizetype bis = ort < globalEnde_ ? -1 : teilstromEnde(strom_, ort);
        if (bis < 0) continue;
        if (ort < ende) {
            ueberlappt_ = true;
            continue;
        }
        if (ort > ende) anhaengen(ende, ort);
        blaetter_[nummer].stueck = int(stuecke_.size());
        anhaengen(ort, bis);
        ende = bis;
    }
    if (ende < strom_.size()) anhaengen(ende, strom_.size());
}

bool Mappe::datum1904() const {
    const size_t i = suchen(kDatemode);
    return i < global_.size() && global_[i].daten.size() >= 2 && u16(global_[i].daten, 0) == 1;
}

QByteArrayView Mappe::teilstrom(const Blatt& blatt) const {
    if (blatt.stueck < 0) return {};
    return stuecke_[size_t(blatt.stueck)].bytes;
}

QString Mappe::schreibhindernis() const {
    const QString neuSpeichern = QStringLiteral(
        " Öffnen Sie sie in Excel, und speichern Sie sie im Format 'Microsoft Excel-Arbeitsmappe (*.xls)' "
        "neu.");
    if (blaetter_.empty())
        return QStringLiteral("Die Arbeitsmappe ist beschädigt: Sie hat keine Blätter.") + neuSpeichern;
    if (!biff8_ && codeseitennummer_ == kUnicodeSeite)
        return QStringLiteral(
                   "Diese Arbeitsmappe im Format von Excel 5/95 gibt für ihre Texte keine gültige "
                   "Codeseite an und kann nicht geändert werden.") +
               neuSpeichern;
    for (const Blatt& blatt : blaetter_)
        if (blatt.stueck < 0 || blatt.name.isEmpty() || ueberlappt_)
            return QStringLiteral(
                       "Die Arbeitsmappe ist beschädigt: Nicht alle ihre Blätter sind vorhanden.") +
                   neuSpeichern;
    return {};
}

size_t Mappe::suchen(quint16 typ, size_t ab) const {
    while (ab < global_.size() && global_[ab].typ != typ) ++ab;
    return ab;
}

size_t Mappe::hinterLetztem(quint16 typ, size_t sonst) const {
    for (size_t i = global_.size(); i-- > 0;) {
        if (global_[i].typ != typ) continue;
        for (++i; i < global_.size() && global_[i].typ == kContinue;) ++i;
        return i;
    }
    return sonst;
}

QByteArray Mappe::boundsheet(quint8 sichtbarkeit, Blattart art, const QString& name) const {
    QByteArray daten(4, '\0');
    daten.append(char(sichtbarkeit)).append(char(art));
    const QByteArray text = namenBytes(*this, name);
    daten.append(char(biff8_ ? name.size() : text.size())).append(text);
    return daten;
}

void Mappe::einfuegen(size_t ort, Satz satz) {
    global_.insert(global_.begin() + std::ptrdiff_t(ort), std::move(satz));
    for (Blatt& blatt : blaetter_)
        if (blatt.satz >= ort) ++blatt.satz;
}

void Mappe::entfernen(size_t ort) {
    global_.erase(global_.begin() + std::ptrdiff_t(ort));
    for (Blatt& blatt : blaetter_)
        if (blatt.satz > ort) --blatt.satz;
}

qsizetype Mappe::ortVon(size_t satz) const {
    qsizetype ort = 0;
    for (size_t i = 0; i < satz; ++i) ort += kSatzkopf + global_[i].daten.size();
    return ort;
}

void Mappe::blattAnhaengen(const QString& name, QByteArray teilstrom) {
    int letztes = -1;
    for (const Blatt& blatt : blaetter_) letztes = std::max(letztes, blatt.stueck);
    Blatt neu;
    neu.name = name;
    neu.satz = blaetter_.back().satz + 1;
    neu.stueck = letztes + 1;
    einfuegen(neu.satz, {kBoundsheet, boundsheet(0, Blattart::Tabelle, name)});
    // In front of what lies behind the last sheet: that is padding or unlisted, and readers that walk the
    // stream must not meet it first.
    stuecke_.insert(stuecke_.begin() + neu.stueck, {-1, std::move(teilstrom)});
    blaetter_.push_back(neu);
}

void Mappe::blattEntfernen(size_t nummer) {
    const Blatt weg = blaetter_[nummer];
    blaetter_.erase(blaetter_.begin() + std::ptrdiff_t(nummer));
    entfernen(weg.satz);
    stuecke_.erase(stuecke_.begin() + weg.stueck);
    for (Blatt& blatt : blaetter_)
        if (blatt.stueck > weg.stueck) --blatt.stueck;
}

void Mappe::blattBenennen(size_t nummer, const QString& name) {
    Blatt& blatt = blaetter_[nummer];
    global_[blatt.satz].daten = boundsheet(u8(global_[blatt.satz].daten, 4), blatt.art, name);
    blatt.name = name;
}

QByteArray Mappe::bytes() const {
    std::vector<Satz> global = global_;
    qsizetype groesse = 0;
    for (const Satz& satz : global) groesse += kSatzkopf + satz.daten.size();
    std::vector<qsizetype> neu;
    for (const Stueck& stueck : stuecke_) {
        neu.push_back(groesse);
        groesse += stueck.bytes.size();
    }
    for (const Blatt& blatt : blaetter_)
        if (blatt.stueck >= 0)
            setzen<quint32>(global[blatt.satz].daten, 0, quint32(neu[size_t(blatt.stueck)]));
    QByteArray strom;
    strom.reserve(groesse);
    for (const Satz& satz : global) {
        anhaengen<quint16>(strom, satz.typ);
        anhaengen<quint16>(strom, quint16(satz.daten.size()));
        strom += satz.daten;
    }
    for (size_t i = 0; i < stuecke_.size(); ++i) {
        strom += stuecke_[i].bytes;
        if (stuecke_[i].ort >= 0) indexVerschieben(strom, neu[i], biff8_, neu[i] - stuecke_[i].ort);
    }
    return strom;
}

}  // namespace excel
