// The reader of query texts: tokens, then recursive descent.
#include "engine/dao/abfrage.h"

#include "base/fehler.h"

namespace dao {
namespace {

constexpr int kMaxTiefe = 100;

enum class Zeichenart { Name, Wort, Zahl, Zeichen, Ende };

struct Marke {
    Zeichenart art = Zeichenart::Ende;
    QString text;  // a name without its brackets
    qsizetype stelle = 0;
};

bool istBuchstabe(QChar c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

bool istZiffer(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool istZwischenraum(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

class Leser {
  public:
    explicit Leser(const QString& text) : text_(text) { weiter(); }

    Auswahlabfrage auswahl();
    Loeschabfrage loeschung();
    Bedingung nurBedingung();

  private:
    [[noreturn]] void erwartet(const QString& was) const;
    void weiter();
    QString name();
    Marke folge(Zeichenart art, qsizetype anfang, bool (*gehoertDazu)(QChar));

    bool istWort(QLatin1StringView wort) const;
    bool nimmWort(QLatin1StringView wort);
    bool nimmZeichen(QChar zeichen);
    void verlangeWort(QLatin1StringView wort);
    void verlangeZeichen(QChar zeichen);
    QString verlangeName();
    void verlangeEnde() const;

    std::vector<std::optional<QString>> spaltenliste();
    std::vector<QString> namensliste();
    Bedingung oder(int tiefe);
    Bedingung und(int tiefe);
    Bedingung nicht(int tiefe);
    Bedingung gleichung();
    Operand operand();

    const QString& text_;
    qsizetype hier_ = 0;
    Marke marke_;
};

void Leser::erwartet(const QString& was) const {
    throw EngineFehler(kSyntaxfehler,
                       QStringLiteral("Syntaxfehler in der Abfrage '%1' an der Stelle %2: erwartet wird %3.")
                           .arg(text_, QString::number(marke_.stelle + 1), was));
}

QString Leser::name() {
    const qsizetype ende = text_.indexOf(u']', hier_ + 1);
    marke_.stelle = hier_;
    if (ende < 0) erwartet(QStringLiteral("die Klammer ']'"));
    const QString inhalt = text_.mid(hier_ + 1, ende - hier_ - 1);
    if (inhalt.isEmpty()) erwartet(QStringLiteral("ein Name"));
    hier_ = ende + 1;
    return inhalt;
}

Marke Leser::folge(Zeichenart art, qsizetype anfang, bool (*gehoertDazu)(QChar)) {
    while (hier_ < text_.size() && gehoertDazu(text_[hier_])) ++hier_;
    return {art, text_.mid(anfang, hier_ - anfang), anfang};
}

// A number ends where the digits end, a word where the letters end: "13AND" is two tokens.
void Leser::weiter() {
    while (hier_ < text_.size() && istZwischenraum(text_[hier_])) ++hier_;
    const qsizetype anfang = hier_;
    if (anfang == text_.size()) {
        marke_ = {Zeichenart::Ende, QString(), anfang};
    } else if (text_[anfang] == u'[') {
        const QString inhalt = name();
        marke_ = {Zeichenart::Name, inhalt, anfang};
    } else if (istZiffer(text_[anfang])) {
        marke_ = folge(Zeichenart::Zahl, anfang, istZiffer);
    } else if (istBuchstabe(text_[anfang])) {
        marke_ = folge(Zeichenart::Wort, anfang, istBuchstabe);
    } else {
        ++hier_;
        marke_ = {Zeichenart::Zeichen, QString(text_[anfang]), anfang};
    }
}

bool Leser::istWort(QLatin1StringView wort) const {
    return marke_.art == Zeichenart::Wort && marke_.text.compare(wort, Qt::CaseInsensitive) == 0;
}

bool Leser::nimmWort(QLatin1StringView wort) {
    if (!istWort(wort)) return false;
    weiter();
    return true;
}

bool Leser::nimmZeichen(QChar zeichen) {
    if (marke_.art != Zeichenart::Zeichen || marke_.text[0] != zeichen) return false;
    weiter();
    return true;
}

void Leser::verlangeWort(QLatin1StringView wort) {
    if (!nimmWort(wort)) erwartet(wort);
}

void Leser::verlangeZeichen(QChar zeichen) {
    if (!nimmZeichen(zeichen)) erwartet(QStringLiteral("das Zeichen '%1'").arg(zeichen));
}

QString Leser::verlangeName() {
    if (marke_.art != Zeichenart::Name) erwartet(QStringLiteral("ein Name in eckigen Klammern"));
    const QString name = marke_.text;
    weiter();
    return name;
}

void Leser::verlangeEnde() const {
    if (marke_.art != Zeichenart::Ende) erwartet(QStringLiteral("das Ende der Abfrage"));
}

std::vector<std::optional<QString>> Leser::spaltenliste() {
    std::vector<std::optional<QString>> spalten;
    do {
        if (nimmZeichen(u'*'))
            spalten.emplace_back();
        else
            spalten.emplace_back(verlangeName());
    } while (nimmZeichen(u','));
    return spalten;
}

std::vector<QString> Leser::namensliste() {
    std::vector<QString> namen;
    do namen.push_back(verlangeName());
    while (nimmZeichen(u','));
    return namen;
}

Auswahlabfrage Leser::auswahl() {
    Auswahlabfrage abfrage;
    verlangeWort(QLatin1StringView("SELECT"));
    abfrage.spalten = spaltenliste();
    verlangeWort(QLatin1StringView("FROM"));
    abfrage.tabelle = verlangeName();
    if (nimmWort(QLatin1StringView("WHERE"))) abfrage.bedingung = oder(0);
    if (nimmWort(QLatin1StringView("ORDER"))) {
        verlangeWort(QLatin1StringView("BY"));
        abfrage.ordnung = namensliste();
    }
    verlangeEnde();
    return abfrage;
}

Loeschabfrage Leser::loeschung() {
    Loeschabfrage abfrage;
    verlangeWort(QLatin1StringView("DELETE"));
    verlangeZeichen(u'*');
    verlangeWort(QLatin1StringView("FROM"));
    abfrage.tabelle = verlangeName();
    verlangeWort(QLatin1StringView("WHERE"));
    abfrage.bedingung = oder(0);
    verlangeEnde();
    return abfrage;
}

Bedingung Leser::nurBedingung() {
    Bedingung bedingung = oder(0);
    verlangeEnde();
    return bedingung;
}

Bedingung Leser::oder(int tiefe) {
    if (tiefe > kMaxTiefe) erwartet(QStringLiteral("eine weniger tief geschachtelte Bedingung"));
    Bedingung erste = und(tiefe);
    if (!istWort(QLatin1StringView("OR"))) return erste;
    Bedingung alle{Bedingung::Art::Oder, {}, {}, {}};
    alle.teile.push_back(std::move(erste));
    while (nimmWort(QLatin1StringView("OR"))) alle.teile.push_back(und(tiefe));
    return alle;
}

Bedingung Leser::und(int tiefe) {
    Bedingung erste = nicht(tiefe);
    if (!istWort(QLatin1StringView("AND"))) return erste;
    Bedingung alle{Bedingung::Art::Und, {}, {}, {}};
    alle.teile.push_back(std::move(erste));
    while (nimmWort(QLatin1StringView("AND"))) alle.teile.push_back(nicht(tiefe));
    return alle;
}

Bedingung Leser::nicht(int tiefe) {
    if (nimmWort(QLatin1StringView("NOT"))) {
        if (tiefe > kMaxTiefe) erwartet(QStringLiteral("eine weniger tief geschachtelte Bedingung"));
        Bedingung verneint{Bedingung::Art::Nicht, {}, {}, {}};
        verneint.teile.push_back(nicht(tiefe + 1));
        return verneint;
    }
    if (!nimmZeichen(u'(')) return gleichung();
    Bedingung innen = oder(tiefe + 1);
    verlangeZeichen(u')');
    return innen;
}

Bedingung Leser::gleichung() {
    Bedingung gleich;
    gleich.links = operand();
    verlangeZeichen(u'=');
    if (marke_.art != Zeichenart::Zahl) erwartet(QStringLiteral("eine Zahl"));
    gleich.rechts = operand();
    return gleich;
}

Operand Leser::operand() {
    if (marke_.art == Zeichenart::Name) return {verlangeName(), Wert()};
    if (marke_.art != Zeichenart::Zahl) erwartet(QStringLiteral("ein Feldname oder eine Zahl"));
    bool passt = false;
    const qint64 ganz = marke_.text.toLongLong(&passt);
    const Wert zahl = passt ? Wert(ganz) : Wert(marke_.text.toDouble());
    weiter();
    return {QString(), zahl};
}

}  // namespace

bool istAuswahlabfrage(const QString& text) {
    qsizetype anfang = 0;
    while (anfang < text.size() && istZwischenraum(text[anfang])) ++anfang;
    constexpr QLatin1StringView kWort("SELECT");
    const qsizetype dahinter = anfang + kWort.size();
    return QStringView(text).mid(anfang).startsWith(kWort, Qt::CaseInsensitive) &&
           (dahinter == text.size() || !istBuchstabe(text[dahinter]));
}

Auswahlabfrage auswahlabfrageLesen(const QString& text) {
    return Leser(text).auswahl();
}

Loeschabfrage loeschabfrageLesen(const QString& text) {
    return Leser(text).loeschung();
}

Bedingung bedingungLesen(const QString& text) {
    return Leser(text).nurBedingung();
}

}  // namespace dao
