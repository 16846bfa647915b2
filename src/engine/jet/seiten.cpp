// Pages read, decoded, cached, encoded and written.
#include "engine/jet/seiten.h"

#include <QBuffer>
#include <QFileDevice>
#include <cerrno>

#include "base/fehler.h"
#include "engine/jet/bytes.h"
#include "engine/jet/kopf.h"

namespace jet {
namespace {

constexpr size_t kFaecher = 256;
constexpr qint64 kKleinsteDatei = 4;  // pages

std::unique_ptr<QIODevice> puffer(QByteArray bytes) {
    auto geraet = std::make_unique<QBuffer>();
    geraet->setData(std::move(bytes));
    geraet->open(QIODevice::ReadWrite);
    return geraet;
}

quint32 groessteSeitenzahl(const Format& format) {
    return (format.jet4 ? 0x80000000u : 0x40000000u) / quint32(format.seite);
}

[[noreturn]] void lesefehler(quint32 nummer, const QIODevice& geraet) {
    throw EngineFehler(kDateifehler,
                       u"Die Datenbankdatei kann nicht gelesen werden (Seite %1: %2). Prüfen Sie "
                       u"den Datenträger oder die Netzverbindung."_qs.arg(nummer)
                           .arg(geraet.errorString()));
}

[[noreturn]] void schreibfehler(int grund, const QIODevice& geraet) {
    if (grund == ENOSPC || grund == EDQUOT)
        throw EngineFehler(kDatentraegerVoll,
                           u"Der Datenträger ist voll. Schaffen Sie Platz und wiederholen Sie."_qs);
    throw EngineFehler(kDateifehler,
                       u"Die Datenbankdatei kann nicht geschrieben werden (%1). Prüfen Sie den "
                       u"Datenträger und wiederholen Sie."_qs.arg(geraet.errorString()));
}

}  // namespace

Seitendatei::Seitendatei(QByteArray bytes) : Seitendatei(puffer(std::move(bytes))) {}

Seitendatei::Seitendatei(std::unique_ptr<QIODevice> geraet) : geraet_(std::move(geraet)), faecher_(kFaecher) {
    oeffnen();
}

Seitendatei::~Seitendatei() = default;

void Seitendatei::oeffnen() {
    const QByteArray anfang = rohLesen(0, std::min<qint64>(geraet_->size(), kJet4.seite));
    format_ = &formatErkennen(anfang);
    const qint64 groesse = geraet_->size();
    if (groesse < kKleinsteDatei * format_->seite)
        throw EngineFehler(kBeschaedigt,
                           u"Die Datei ist zu kurz für eine Access-Datenbank. Verwenden Sie "
                           u"eine Sicherungskopie."_qs);
    if (groesse / format_->seite > groessteSeitenzahl(*format_))
        throw EngineFehler(kBeschaedigt,
                           u"Die Datei ist größer, als eine Access-Datenbank sein kann. "
                           u"Verwenden Sie eine Sicherungskopie."_qs);
    seitenzahl_ = quint32(groesse / format_->seite);
    angebrochen_ = groesse % format_->seite != 0;
    kopf_ = kopfLesen(anfang);
    seiteZweiPruefen();
}

void Seitendatei::seiteZweiPruefen() const {
    const QByteArray zwei = seite(kSeiteObjekte);
    if (zwei[0] == char(kTdefseite) && zwei[1] == 1) return;
    if (format_->ace)
        throw EngineFehler(kSystemgrenze,
                           u"Die Datei ist mit einem Kennwort von Access 2007 oder neuer "
                           u"verschlüsselt. Entfernen Sie das Kennwort in Access."_qs);
    beschaedigt(u"MSysObjects", kSeiteObjekte, 0);
}

QByteArray Seitendatei::rohLesen(quint32 nummer, qint64 groesse) const {
    QByteArray bytes(groesse, Qt::Uninitialized);
    if (!geraet_->seek(qint64(nummer) * format_->seite) || geraet_->read(bytes.data(), groesse) != groesse)
        lesefehler(nummer, *geraet_);
    return bytes;
}

// Encodes and decodes: each page has a key of its own, page 0 has none.
void Seitendatei::umwandeln(quint32 nummer, QByteArray& bytes) const {
    if (kopf_.schluessel == 0 || nummer == 0) return;
    const quint32 schluessel = kopf_.schluessel ^ nummer;
    rc4(QByteArrayView(reinterpret_cast<const char*>(&schluessel), 4), bytes.data(), bytes.size());
}

QByteArray Seitendatei::seite(quint32 nummer) const {
    if (nummer >= seitenzahl_) beschaedigt(u"Seitennummer jenseits des Dateiendes", nummer);
    Fach& fach = faecher_[nummer % kFaecher];
    if (fach.bytes.isEmpty() || fach.nummer != nummer) {
        QByteArray bytes = rohLesen(nummer, format_->seite);
        umwandeln(nummer, bytes);
        fach = {nummer, std::move(bytes)};
    }
    return fach.bytes;
}

QByteArray Seitendatei::seite(quint32 nummer, Seitenart art, QStringView struktur) const {
    if (nummer == 0 || nummer >= seitenzahl_) beschaedigt(struktur, nummer);
    QByteArray bytes = seite(nummer);
    if (bytes[0] != char(art)) beschaedigt(struktur, nummer, 0);
    return bytes;
}

void Seitendatei::schreiben(quint32 nummer, const QByteArray& bytes) {
    Q_ASSERT(nummer < seitenzahl_ && bytes.size() == format_->seite);
    if (!geraet_->isWritable())
        throw EngineFehler(
            kSchreibgeschuetzt,
            u"Die Datenbankdatei ist nur zum Lesen geöffnet. Heben Sie den Schreibschutz auf."_qs);
    QByteArray kodiert = bytes;
    umwandeln(nummer, kodiert);
    errno = 0;
    if (!geraet_->seek(qint64(nummer) * format_->seite) || geraet_->write(kodiert) != kodiert.size())
        schreibfehler(errno, *geraet_);
    faecher_[nummer % kFaecher] = {nummer, bytes};
}

quint32 Seitendatei::anhaengen() {
    if (seitenzahl_ >= groessteSeitenzahl(*format_))
        throw EngineFehler(kSystemgrenze,
                           u"Die Datenbankdatei würde größer, als das Format erlaubt. Löschen Sie "
                           u"Tabellen oder komprimieren Sie die Datei in Access."_qs);
    const quint32 nummer = seitenzahl_++;
    schreiben(nummer, QByteArray(format_->seite, '\0'));
    return nummer;
}

void Seitendatei::leeren() {
    auto* datei = qobject_cast<QFileDevice*>(geraet_.get());
    if (!datei) return;
    errno = 0;
    if (!datei->flush()) schreibfehler(errno, *geraet_);
}

QByteArray Seitendatei::bytes() const {
    const auto* puffer = qobject_cast<const QBuffer*>(geraet_.get());
    return puffer ? puffer->data() : QByteArray();
}

}  // namespace jet
