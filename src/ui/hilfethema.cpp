// Finds a topic in the help file.
#include "ui/hilfethema.h"

#include <QRegularExpression>
#include <QStringList>

#include "base/text.h"

namespace {

constexpr auto kMarke = u"###";

bool istMarke(const QString& zeile) {
    return zeile.startsWith(kMarke);
}

// The lines of a file, read one after the other. Past the end the line last read stays.
class Zeilen {
  public:
    explicit Zeilen(const QString& text)
        : zeilen_(text.split(QRegularExpression(QStringLiteral("\r\n|\r|\n")))) {
        if (zeilen_.constLast().isEmpty()) zeilen_.removeLast();
    }
    bool amEnde() const { return stelle_ == zeilen_.size(); }
    void lesen(QString& zeile) {
        if (!amEnde()) zeile = zeilen_[stelle_++];
    }

  private:
    QStringList zeilen_;
    qsizetype stelle_ = 0;
};

// Reads up to the key; false when it is not there.
bool schluesselFinden(Zeilen& zeilen, const QString& schluessel) {
    QString zeile;
    while (!istMarke(zeile) && !zeilen.amEnde()) {
        zeilen.lesen(zeile);
        if (istMarke(zeile)) zeilen.lesen(zeile);
        if (zeile == schluessel) return true;
    }
    return false;
}

QString textLesen(Zeilen& zeilen) {
    QString text;
    QString zeile;
    zeilen.lesen(zeile);
    while (!istMarke(zeile) && !zeilen.amEnde()) {
        zeilen.lesen(zeile);
        if (!istMarke(zeile)) text += zeile + QStringLiteral("\r\n");
    }
    return text;
}

}  // namespace

QString HilfeThemaSuchen(const QString& hilfe, const QString& schluessel) {
    Zeilen zeilen(hilfe);
    if (schluesselFinden(zeilen, schluessel)) return textLesen(zeilen);
    return QStringLiteral("Zu diesem Thema ist leider keine Hilfe verfügbar.");
}

QString HilfeSchluessel(int rahmen, const QString& titel) {
    switch (rahmen) {
        case 0:
            return QStringLiteral("Nichts");
        case 7:
            return QStringLiteral("Zuordnung der Felder");
        case 12:
            return QStringLiteral("Dubletten bearbeiten");
        case 22:
            return QStringLiteral("Mülldatensätze bearbeiten");
        default:
            return Trim(titel);
    }
}
