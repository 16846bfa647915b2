// Invented German addresses with known duplicates.
#include "adressliste.h"

#include <cmath>

#include "search/aufbereitung.h"

namespace {

constexpr int kSpaltenbreite = 255;
constexpr size_t kVorrat = 5000;
constexpr double kAnteilDubletten = 0.12;

QStringList worte(const char* text) {
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

const QStringList kNachnamen = worte(
    "Müller Schmidt Schneider Fischer Weber Meyer Wagner Becker Schulz Hoffmann Schäfer Koch Bauer Richter "
    "Klein Wolf Schröder Neumann Schwarz Zimmermann Braun Krüger Hofmann Hartmann Lange Schmitt Werner "
    "Schmitz Krause Meier Lehmann Schmid Schulze Maier Köhler Herrmann König Walter Mayer Huber Kaiser Fuchs "
    "Peters Lang Scholz Möller Weiß Jung Hahn Schubert Vogel Friedrich Keller Günther Frank Berger Winkler "
    "Roth Beck Lorenz Baumann Franke Albrecht Schuster Simon Ludwig Böhm Winter Kraus Martin Schumacher "
    "Krämer Vogt Stein Jäger Otto Sommer Groß Seidel Heinrich Brandt Haas Schreiber Graf Schulte Dietrich "
    "Ziegler Kuhn Kühn Pohl Engel Horn Busch Bergmann Thomas Voigt Sauer Arnold Wolff Pfeiffer Özdemir "
    "Yılmaz Nowak Kowalski Nguyen Großmann Straßer Weißenberger Kreßmann");
const QStringList kHerren = worte(
    "Peter Michael Thomas Andreas Wolfgang Klaus Jürgen Günter Stefan Christian Uwe Werner Horst Frank "
    "Dieter Manfred Gerhard Hans Bernd Thorsten Matthias Helmut Walter Heinz Martin Jörg Rolf Jens Sven "
    "Alexander Jan Rainer Holger Karl-Heinz Florian Tobias René Björn Mehmet Kai");
const QStringList kFrauen = worte(
    "Ursula Maria Monika Petra Elisabeth Sabine Renate Helga Karin Brigitte Ingrid Erika Andrea Gisela "
    "Claudia Susanne Gabriele Christa Christine Hildegard Anna Birgit Barbara Gerda Stefanie Nicole Heike "
    "Angelika Ute Silke Jutta Katharina Julia Anja Ayşe Jacqueline Zoë Käthe Bärbel Gül");
// A town and the first two digits of its postal codes.
const QStringList kOrte = worte(
    "Berlin:10 Hamburg:20 München:80 Köln:50 Frankfurt_am_Main:60 Stuttgart:70 Düsseldorf:40 Leipzig:04 "
    "Dortmund:44 Essen:45 Bremen:28 Dresden:01 Hannover:30 Nürnberg:90 Duisburg:47 Bochum:44 Wuppertal:42 "
    "Bielefeld:33 Bonn:53 Münster:48 Mannheim:68 Karlsruhe:76 Augsburg:86 Wiesbaden:65 Mönchengladbach:41 "
    "Gelsenkirchen:45 Aachen:52 Braunschweig:38 Kiel:24 Chemnitz:09 Halle_(Saale):06 Magdeburg:39 "
    "Freiburg_im_Breisgau:79 Krefeld:47 Mainz:55 Lübeck:23 Erfurt:99 Oberhausen:46 Rostock:18 Kassel:34 "
    "Hagen:58 Potsdam:14 Saarbrücken:66 Hamm:59 Ludwigshafen:67 Oldenburg:26 Mülheim_an_der_Ruhr:45 "
    "Osnabrück:49 Leverkusen:51 Heidelberg:69 Darmstadt:64 Solingen:42 Regensburg:93 Herne:44 Paderborn:33 "
    "Neuss:41 Ingolstadt:85 Offenbach:63 Fürth:90 Würzburg:97 Ulm:89 Heilbronn:74 Pforzheim:75 Wolfsburg:38 "
    "Göttingen:37 Bottrop:46 Reutlingen:72 Koblenz:56 Bremerhaven:27 Erlangen:91 Jena:07 Trier:54 "
    "Salzgitter:38 Moers:47 Siegen:57 Hildesheim:31 Cottbus:03 Gera:07 Görlitz:02 Plauen:08 Zwickau:08 "
    "Schwerin:19 Flensburg:24 Konstanz:78 Passau:94 Bayreuth:95 Bamberg:96 Kempten:87 Ravensburg:88 "
    "Neubrandenburg:17 Brandenburg:14 Stade:21 Celle:29 Gießen:35 Fulda:36");
const QStringList kStaemme = worte(
    "Haupt Bahnhof Schul Garten Berg Dorf Linden Kirch Wald Wiesen Ring Goethe Schiller Mozart Beethoven "
    "Rosen Tannen Birken Eichen Mühlen Feld Stein Post Markt Burg Schloss Bismarck Friedrich Wilhelm Kaiser "
    "König Luther Bach Park Sonnen Blumen Amsel Drossel Finken Meisen Jahn Turn Sport Industrie Gewerbe "
    "Hafen Fluss Brunnen Kloster Kapellen Weinberg Heide Moor See Ufer Brücken Zeppelin Siemens Daimler "
    "Humboldt Kant Hegel Lessing Heine Uhland");
const QStringList kEndungen = worte(
    "straße straße straße straße straße straße straße straße straße straße weg weg weg weg weg platz allee "
    "gasse ring damm");
const QStringList kBesondere{
    QStringLiteral("Am Markt"),  QStringLiteral("An der Allee"),        QStringLiteral("Auf dem Berg"),
    QStringLiteral("Im Winkel"), QStringLiteral("Zum Bahnhof"),         QStringLiteral("Unter den Linden"),
    QStringLiteral("In der Au"), QStringLiteral("Straße des 17. Juni"), QStringLiteral("Zur Alten Mühle")};
const QStringList kBranchen = worte(
    "Maschinenbau Elektro Autohaus Bäckerei Metzgerei Tischlerei Dachdecker Computer Software Immobilien "
    "Versicherung Spedition Reisebüro Apotheke Druckerei Verlag Gartenbau Heizungsbau Malerbetrieb Optik "
    "Möbel Textil Logistik Consulting Agentur Bau Stahl Papier Chemie Hotel");
const QStringList kRechtsformen{QStringLiteral("GmbH"),
                                QStringLiteral("GmbH"),
                                QStringLiteral("GmbH"),
                                QStringLiteral("GmbH"),
                                QStringLiteral("GmbH & Co. KG"),
                                QStringLiteral("GmbH & Co. KG"),
                                QStringLiteral("KG"),
                                QStringLiteral("AG"),
                                QStringLiteral("GbR"),
                                QStringLiteral("G. m. b. H."),
                                QStringLiteral("OHG"),
                                QStringLiteral("e.K.")};

QString ohneUmlaute(QString text) {
    static const QStringList paare = worte("ä ae ö oe ü ue ß ss Ä Ae Ö Oe Ü Ue");
    for (int i = 0; i < paare.size(); i += 2) text.replace(paare[i], paare[i + 1]);
    return text;
}

}  // namespace

const FeldZuordnungen& Adresszuordnung() {
    static const FeldZuordnungen zuordnung{{2, 3}, {4, 1}, {4, 2}, {4, 4}, {3, 3}, {3, 4},
                                           {3, 8}, {5, 3}, {5, 5}, {6, 1}, {6, 2}};
    return zuordnung;
}

// The front of a list comes up far more often.
const QString& Adressliste::schief(const QStringList& liste) {
    return liste[qsizetype(double(liste.size()) * std::pow(anteil(), 2.2))];
}

QString Adressliste::firma(const QString& nachname) {
    if (anteil() >= 0.4) return {};
    const double form = anteil();
    const QString name = form < 0.3   ? nachname
                         : form < 0.6 ? ausgewaehlt(kBranchen) + u' ' + nachname
                         : form < 0.8 ? nachname + u' ' + ausgewaehlt(kBranchen)
                                      : nachname + QStringLiteral(" & ") + schief(kNachnamen);
    return name + u' ' + ausgewaehlt(kRechtsformen);
}

QString Adressliste::strasse() {
    static const QStringList zusaetze{QString(),
                                      QString(),
                                      QString(),
                                      QString(),
                                      QStringLiteral("a"),
                                      QStringLiteral("b"),
                                      QStringLiteral(" c"),
                                      QStringLiteral("-2")};
    const QString name =
        anteil() < 0.06 ? ausgewaehlt(kBesondere) : schief(kStaemme) + ausgewaehlt(kEndungen);
    return name + u' ' + QString::number(1 + int(120 * std::pow(anteil(), 2))) + ausgewaehlt(zusaetze);
}

QStringList Adressliste::neue() {
    static const QStringList titel{QString(), QString(), QString(), QString(), QStringLiteral(" Dr."),
                                   QString(), QString(), QString(), QString(), QStringLiteral(" Prof. Dr.")};
    QStringList a(kAdressfelder);
    const bool frau = anteil() < 0.48;
    a[kFeldAnrede] = (frau ? QStringLiteral("Frau") : QStringLiteral("Herr")) + ausgewaehlt(titel);
    a[kFeldVorname] = schief(frau ? kFrauen : kHerren);
    a[kFeldNachname] = schief(kNachnamen);
    if (anteil() < 0.06) a[kFeldNachname] += u'-' + schief(kNachnamen);
    a[kFeldFirma] = firma(a[kFeldNachname]);
    a[kFeldStrasse] = strasse();
    const QStringList ort = schief(kOrte).split(u':');
    a[kFeldOrt] = QString(ort[0]).replace(u'_', u' ');
    a[kFeldPlz] = ort[1] + QStringLiteral("%1").arg(zahl(1, 999), 3, 10, QChar(u'0'));
    const QString vorwahl = u'0' + QString::number(zahl(30, 9999)) + u'/';
    const int nummer = zahl(10000, 100000000);
    a[kFeldTelefon] = vorwahl + QString::number(nummer);
    if (anteil() < 0.35) a[kFeldTelefax] = vorwahl + QString::number(nummer + 1);
    const QString name = a[kFeldFirma].isEmpty() ? a[kFeldNachname] : a[kFeldFirma].section(u' ', -2, -2);
    const QString netz = ohneUmlaute(name.toLower()) + QStringLiteral(".example");
    if (anteil() < 0.6)
        a[kFeldEmail] = ohneUmlaute((a[kFeldVorname] + u'.' + a[kFeldNachname]).toLower()) + u'@' + netz;
    if (!a[kFeldFirma].isEmpty() && anteil() < 0.7) a[kFeldHomepage] = QStringLiteral("http://www.") + netz;
    return a;
}

QString Adressliste::tippfehler(const QString& text) {
    if (text.size() < 4) return text;
    const int i = zahl(1, int(text.size()) - 2);
    switch (zahl(0, 2)) {
        case 0:
            return text.left(i) + text.mid(i + 1);
        case 1:
            return text.left(i) + text[i + 1] + text[i] + text.mid(i + 2);
        default:
            return text.left(i) + text[i] + text.mid(i);
    }
}

void Adressliste::feldEntstellen(QStringList& a) {
    switch (zahl(0, 9)) {
        case 0:
            a[kFeldStrasse].replace(QStringLiteral("straße"), QStringLiteral("-Str."));
            break;
        case 1:
            a[kFeldNachname] = anteil() < 0.5 ? ohneUmlaute(a[kFeldNachname]) : tippfehler(a[kFeldNachname]);
            break;
        case 2:
            a[kFeldVorname] = anteil() < 0.3   ? QString()
                              : anteil() < 0.5 ? a[kFeldVorname].left(1) + u'.'
                                               : tippfehler(a[kFeldVorname]);
            break;
        case 3:
            a[kFeldTelefon] = anteil() < 0.2
                                  ? QString()
                                  : QStringLiteral("+49 ") + a[kFeldTelefon].mid(1).replace(u'/', u' ');
            break;
        case 4:
            a[kFeldOrt] = anteil() < 0.6 ? ohneUmlaute(a[kFeldOrt]) : tippfehler(a[kFeldOrt]);
            break;
        case 5:
            a[kFeldFirma] = anteil() < 0.5 ? a[kFeldFirma].toUpper() : tippfehler(a[kFeldFirma]);
            break;
        case 6:
            a[kFeldEmail].clear();
            break;
        case 7:
            a[kFeldPlz] = anteil() < 0.3 ? QString() : a[kFeldPlz].left(4) + QString::number(zahl(0, 9));
            break;
        case 8:
            a[kFeldAnrede] = a[kFeldAnrede].section(u' ', 0, 0);
            break;
        default:
            std::swap(a[kFeldVorname], a[kFeldNachname]);
            break;
    }
}

QStringList Adressliste::entstellt(QStringList adresse) {
    for (int n = zahl(1, 3); n > 0; --n) feldEntstellen(adresse);
    return adresse;
}

QStringList Adressliste::naechste() {
    if (!vorrat_.empty() && anteil() < kAnteilDubletten)
        return entstellt(vorrat_[size_t(zahl(0, int(vorrat_.size()) - 1))]);
    QStringList adresse = neue();
    if (vorrat_.size() < kVorrat)
        vorrat_.push_back(adresse);
    else if (anteil() < 0.3)
        vorrat_[size_t(zahl(0, int(kVorrat) - 1))] = adresse;
    return adresse;
}

std::vector<Zeile> AufbereiteteAdressen(int anzahl, quint32 samen) {
    Adressliste liste(samen);
    std::vector<Zeile> zeilen;
    zeilen.reserve(size_t(anzahl));
    for (int i = 0; i < anzahl; ++i) {
        const QStringList roh = liste.naechste();
        Zeile zeile;
        for (int f = 0; f < kAdressfelder; ++f)
            zeile.push_back(AufbereiteterWert(Wert(roh[f]), Adresszuordnung()[size_t(f)], kSpaltenbreite));
        zeilen.push_back(std::move(zeile));
    }
    return zeilen;
}
