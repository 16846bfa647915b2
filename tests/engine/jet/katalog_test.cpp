// The catalogue: tables, fields, indexes, relations, properties.
#include <map>

#include "engine/jet/bytes.h"
#include "engine/jet/katalog_lesen.h"
#include "engine/jet/zeile.h"
#include "proben.h"

using engine::FeldDef;
using engine::IndexDef;
using engine::Katalog;
using engine::TabellenDef;

namespace {

Katalog katalogVon(const QString& name) {
    return jet::katalogLesen(*proben::oeffnen(name));
}

const TabellenDef& tabelle(const Katalog& k, const QString& name) {
    for (const TabellenDef& t : k.tabellen)
        if (t.name == name) return t;
    throw std::runtime_error("Tabelle fehlt: " + name.toStdString());
}

QStringList namenMit(const Katalog& k, int attribute) {
    QStringList namen;
    for (const TabellenDef& t : k.tabellen)
        if (t.attribute == attribute) namen += t.name;
    return namen;
}

// "PrimaryKey UPR id+" : name, flags, fields.
QStringList indexTexte(const TabellenDef& t) {
    QStringList texte;
    for (const IndexDef& i : t.indexe) {
        QString text = i.name + u' ';
        if (i.eindeutig) text += u'U';
        if (i.primaer) text += u'P';
        if (i.erforderlich) text += u'R';
        if (i.ohneNull) text += u'N';
        if (i.fremd) text += u'F';
        for (const engine::IndexFeld& f : i.felder) text += u' ' + f.name + (f.absteigend ? u'-' : u'+');
        texte += text;
    }
    return texte;
}

}  // namespace

TEST(JetKatalog, GenauDieBenutzertabellenHabenAttributNull) {
    const std::map<QString, QStringList> erwartet = {
        {u"jet3-typen.mdb"_qs, {"Table1", "Table2", "Table3", "Table4"}},
        {u"jet3-relationen.mdb"_qs, {"Table1", "Table2", "Table3"}},
        {u"jet3-index.mdb"_qs, {"Table1"}},
        {u"jet3-kodiert.mdb"_qs, {"Table1"}},
        {u"jet4-relationen.mdb"_qs, {"Table1", "Table2", "Table3"}},
        {u"jet4-kodiert.mdb"_qs, {"Table1"}},
        {u"jet4-passwort.mdb"_qs, {"Table1"}},
        {u"jet4-memo-ole.mdb"_qs, {"MSP_PROJECTS"}},
        {u"jet4-verschobene-zeilen.mdb"_qs, {"Table1"}},
        {u"jet4-geloeschte-spalten.mdb"_qs, {"Table1"}},
        {u"jet4-verknuepft.mdb"_qs, {}},
        {u"jet4-leer-adox.mdb"_qs, {}},
        {u"ace-2007.accdb"_qs, {"Table1", "Table2", "Table3", "Table4"}},
        {u"daten/adressen-500.mdb"_qs, {"Adressen"}}};
    for (const auto& [name, tabellen] : erwartet) {
        SCOPED_TRACE(name.toStdString());
        PROBE_ODER_UEBERSPRINGEN(name);
        EXPECT_EQ(namenMit(katalogVon(name), 0), tabellen);
    }
}

TEST(JetKatalog, SystemtabellenUndVersteckteWerdenUnterschieden) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-passwort.mdb"_qs);
    const Katalog k = katalogVon(u"jet4-passwort.mdb"_qs);
    EXPECT_EQ(tabelle(k, u"MSysObjects"_qs).attribute, dao::dbSystemObject);
    EXPECT_EQ(tabelle(k, u"MSysNavPaneGroups"_qs).attribute, dao::dbSystemObject | dao::dbHiddenObject);
}

TEST(JetKatalog, VerknuepfteTabellenStehenOhneFelderDa) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-verknuepft.mdb"_qs);
    const Katalog k = katalogVon(u"jet4-verknuepft.mdb"_qs);
    EXPECT_EQ(namenMit(k, dao::dbAttachedTable), QStringList({"table2", "Table1"}));
    EXPECT_TRUE(tabelle(k, u"Table1"_qs).felder.empty());
    EXPECT_EQ(tabelle(k, u"Table1"_qs).zeilen, -1);
}

TEST(JetKatalog, ReihenfolgeIstDieDerZeilenNichtDerNamen) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    QStringList namen;
    for (const TabellenDef& t : katalogVon(u"jet4-relationen.mdb"_qs).tabellen) namen += t.name;
    EXPECT_EQ(namen,
              QStringList({"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships", "MSysAccessObjects",
                           "Table1", "Table2", "Table3", "MSysNavPaneGroupCategories", "MSysNavPaneGroups",
                           "MSysNavPaneGroupToObjects", "MSysNameMap", "MSysNavPaneObjectIDs"}));
}

TEST(JetKatalog, TypenUndGroessenVonJet3) {
    PROBE_ODER_UEBERSPRINGEN(u"jet3-typen.mdb"_qs);
    const Katalog k = katalogVon(u"jet3-typen.mdb"_qs);
    struct Fall {
        const char16_t* name;
        int typ;
        int groesse;
        int attribute;
    };
    const Fall faelle[] = {
        {u"A", dao::dbText, 50, 34},   {u"B", dao::dbText, 100, 34},   {u"C", dao::dbByte, 1, 33},
        {u"D", dao::dbInteger, 2, 33}, {u"E", dao::dbLong, 4, 33},     {u"F", dao::dbDouble, 8, 33},
        {u"G", dao::dbDate, 8, 33},    {u"H", dao::dbCurrency, 8, 33}, {u"I", dao::dbBoolean, 1, 33}};
    const TabellenDef& t = tabelle(k, u"Table1"_qs);
    ASSERT_EQ(t.felder.size(), std::size(faelle));
    for (size_t i = 0; i < t.felder.size(); ++i) {
        SCOPED_TRACE(t.felder[i].name.toStdString());
        EXPECT_EQ(t.felder[i].name, QString::fromUtf16(faelle[i].name));
        EXPECT_EQ(t.felder[i].typ, faelle[i].typ);
        EXPECT_EQ(t.felder[i].groesse, faelle[i].groesse);
        EXPECT_EQ(t.felder[i].attribute, faelle[i].attribute);
    }
    EXPECT_EQ(tabelle(k, u"Table2"_qs).felder.size(), 89u);
    EXPECT_EQ(tabelle(k, u"Table4"_qs).felder.size(), 2u);
}

TEST(JetKatalog, TextgroesseInZeichenAuchInJet4) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    const Katalog k = katalogVon(u"jet4-relationen.mdb"_qs);
    EXPECT_EQ(tabelle(k, u"Table2"_qs).felder[1].groesse, 50);
}

TEST(JetKatalog, MemoUndOleHabenGroesseNull) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-memo-ole.mdb"_qs);
    const Katalog k = katalogVon(u"jet4-memo-ole.mdb"_qs);
    int memos = 0;
    for (const FeldDef& f : tabelle(k, u"MSP_PROJECTS"_qs).felder) {
        if (f.typ != dao::dbMemo && f.typ != dao::dbLongBinary) continue;
        ++memos;
        EXPECT_EQ(f.groesse, 0) << f.name.toStdString();
    }
    EXPECT_GE(memos, 2);
}

TEST(JetKatalog, AutowertHatBit16) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-passwort.mdb"_qs);
    const Katalog k = katalogVon(u"jet4-passwort.mdb"_qs);
    const TabellenDef& t = tabelle(k, u"Table1"_qs);
    EXPECT_EQ(t.felder[0].attribute, dao::dbUpdatableField | dao::dbFixedField | dao::dbAutoIncrField);
    EXPECT_EQ(t.felder[1].attribute, dao::dbUpdatableField | dao::dbVariableField);
}

TEST(JetKatalog, IndexeMitPrimaerEindeutigAbsteigendUndFremd) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    PROBE_ODER_UEBERSPRINGEN(u"jet3-index.mdb"_qs);
    const Katalog k = katalogVon(u"jet4-relationen.mdb"_qs);
    EXPECT_EQ(indexTexte(tabelle(k, u"Table1"_qs)),
              QStringList(
                  {"id  id+", "PrimaryKey UPR id+", "Table2Table1 F otherfk1+", "Table3Table1 F otherfk2+"}));
    EXPECT_EQ(indexTexte(tabelle(k, u"Table2"_qs)),
              QStringList({".rC URF id+", "id  id+", "PrimaryKey UPR id+"}));
    EXPECT_EQ(indexTexte(tabelle(katalogVon(u"jet3-index.mdb"_qs), u"Table1"_qs)),
              QStringList("CD_AGENTE  CD_AGENTE-"));
}

TEST(JetKatalog, Relationen) {
    for (const QString& name : {u"jet3-relationen.mdb"_qs, u"jet4-relationen.mdb"_qs}) {
        SCOPED_TRACE(name.toStdString());
        PROBE_ODER_UEBERSPRINGEN(name);
        const Katalog k = katalogVon(name);
        ASSERT_EQ(k.relationen.size(), 2u);
        const auto& zwei = k.relationen[k.relationen[0].name == u"Table2Table1" ? 0 : 1];
        const auto& drei = k.relationen[k.relationen[0].name == u"Table2Table1" ? 1 : 0];
        EXPECT_EQ(zwei.tabelle, u"Table2"_qs);
        EXPECT_EQ(zwei.fremdtabelle, u"Table1"_qs);
        EXPECT_EQ(zwei.attribute, dao::dbRelationDeleteCascade);
        ASSERT_EQ(zwei.felder.size(), 1u);
        EXPECT_EQ(zwei.felder[0].name, u"id"_qs);
        EXPECT_EQ(zwei.felder[0].fremdname, u"otherfk1"_qs);
        EXPECT_EQ(drei.attribute, dao::dbRelationUpdateCascade);
    }
}

TEST(JetKatalog, RelationenVonSystemtabellenBleibenWeg) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-passwort.mdb"_qs);
    EXPECT_TRUE(katalogVon(u"jet4-passwort.mdb"_qs).relationen.empty());
}

TEST(JetKatalog, GeaendertIstDateUpdateInOrtszeit) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    const Katalog k = katalogVon(u"jet4-relationen.mdb"_qs);
    EXPECT_EQ(tabelle(k, u"Table2"_qs).geaendert.toString(Qt::ISODate), u"2011-06-12T22:12:37"_qs);
}

TEST(JetKatalog, GeloeschteSpaltenFehlenUndDieReiheBleibt) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-geloeschte-spalten.mdb"_qs);
    const Katalog k = katalogVon(u"jet4-geloeschte-spalten.mdb"_qs);
    QStringList namen;
    for (const FeldDef& f : tabelle(k, u"Table1"_qs).felder) namen += f.name;
    EXPECT_EQ(namen, QStringList({"id", "id2", "data", "data2"}));
}

// Every table's properties are said to be one and the same ring of pieces, as long as the file.
TEST(JetKatalog, ErfundeneEigenschaftenBrauchenNichtMehrSpeicherAlsDieDatei) {
    PROBE_ODER_UEBERSPRINGEN(u"jet3-typen.mdb"_qs);
    jet::Seitendatei datei(proben::bytes(u"jet3-typen.mdb"_qs));
    const quint32 laenge = (datei.seitenzahl() - 1) * 2000;
    const quint32 ring = datei.anhaengen();
    QByteArray seite(datei.format().seite, '\0');
    seite.replace(0, 2, "\x01\x01");
    jet::u16Setzen(seite, datei.format().datenSlotzahl, 1);
    jet::u16Setzen(seite, datei.format().datenKopf, 16);
    jet::u32Setzen(seite, 16, ring << 8);
    datei.schreiben(ring, seite);

    const jet::Tabelle objekte = jet::tdefLesen(datei, jet::kSeiteObjekte);
    const jet::Spalte& spalte = objekte.spalten[size_t(objekte.spalteMitName(u"LvProp"))];
    jet::Tabellenleser leser(datei, objekte);
    int tabellen = 0;
    while (leser.weiter()) {
        const auto feld = leser.teile().roh(spalte);
        if (!feld || feld->size() < 12) continue;
        QByteArray bytes = datei.seite(leser.bytesOrt().seite);
        const qsizetype ab =
            bytes.indexOf(leser.bytes().toByteArray()) + (feld->data() - leser.bytes().data());
        jet::u32Setzen(bytes, ab, laenge);
        jet::u32Setzen(bytes, ab + 4, ring << 8);
        datei.schreiben(leser.bytesOrt().seite, bytes);
        ++tabellen;
    }
    ASSERT_GE(tabellen, 4);
    qint64 gelesen = 0;
    for (const jet::Objekt& o : jet::objekteLesen(datei)) gelesen += o.eigenschaften.size();
    EXPECT_GE(gelesen, laenge);
    EXPECT_LE(gelesen, 2 * qint64(datei.seitenzahl()) * datei.format().seite);
}

TEST(JetKatalog, LeereTexteNurWoEsErlaubtIst) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    PROBE_ODER_UEBERSPRINGEN(u"jet3-typen.mdb"_qs);
    PROBE_ODER_UEBERSPRINGEN(u"daten/adressen-500.mdb"_qs);
    const Katalog ja = katalogVon(u"jet4-relationen.mdb"_qs);
    for (const FeldDef& f : tabelle(ja, u"Table2"_qs).felder)
        EXPECT_EQ(f.leerErlaubt, f.name == u"data") << f.name.toStdString();
    // Said to be forbidden, and not said at all.
    const Katalog nein = katalogVon(u"jet3-typen.mdb"_qs);
    for (const FeldDef& f : tabelle(nein, u"Table1"_qs).felder)
        EXPECT_FALSE(f.leerErlaubt) << f.name.toStdString();
    const Katalog nichts = katalogVon(u"daten/adressen-500.mdb"_qs);
    for (const FeldDef& f : tabelle(nichts, u"Adressen"_qs).felder)
        EXPECT_FALSE(f.leerErlaubt) << f.name.toStdString();
}

TEST(JetKatalog, BeschaedigteTabelleLaesstDieAnderenLesbar) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    QByteArray bytes = proben::bytes(u"jet4-relationen.mdb"_qs);
    bytes[27 * 4096 + 0x2D] = char(0xFF);  // Table2: the number of its columns
    bytes[27 * 4096 + 0x2E] = char(0xFF);
    jet::Seitendatei datei(bytes);
    const Katalog k = jet::katalogLesen(datei);
    EXPECT_TRUE(tabelle(k, u"Table2"_qs).felder.empty());
    EXPECT_EQ(tabelle(k, u"Table1"_qs).felder.size(), 5u);
    QString text;
    EXPECT_EQ(fehlerVon([&] { jet::tabelleLesen(datei, u"table2"_qs); }, &text), kBeschaedigt);
    EXPECT_TRUE(text.contains(u"Table2")) << text.toStdString();
}

// Page 27 holds Table2; at 4 the page that continues it, at 8 the bytes of the whole.
TEST(JetKatalog, DefinitionImKreisOderMitFalscherLaengeIstBeschaedigt) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    constexpr qsizetype kAb = 27 * 4096;
    for (const auto& [fortsetzung, laenge] : std::vector<std::pair<quint32, quint32>>{
             {27, 0x7FFFFFFF}, {27, 5000}, {24, 0x7FFFFFFF}, {0, 0x7FFFFFFF}, {0x7FFFFFFF, 9000}}) {
        SCOPED_TRACE(fortsetzung);
        QByteArray bytes = proben::bytes(u"jet4-relationen.mdb"_qs);
        jet::u32Setzen(bytes, kAb + 4, fortsetzung);
        jet::u32Setzen(bytes, kAb + 8, laenge);
        jet::Seitendatei datei(bytes);
        EXPECT_EQ(fehlerVon([&] { jet::tabelleLesen(datei, u"Table2"_qs); }), kBeschaedigt);
        EXPECT_EQ(tabelle(jet::katalogLesen(datei), u"Table1"_qs).felder.size(), 5u);
    }
}

TEST(JetKatalog, TabelleWirdOhneRuecksichtAufGrossschriftGefunden) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    const auto datei = proben::oeffnen(u"jet4-relationen.mdb"_qs);
    EXPECT_EQ(jet::tabelleLesen(*datei, u"TABLE2"_qs).seite(), 27u);
    EXPECT_EQ(fehlerVon([&] { jet::tabelleLesen(*datei, u"gibtsnicht"_qs); }), kNichtGefunden);
}

TEST(JetKatalog, DefinitionDesBeispiels) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-relationen.mdb"_qs);
    const auto datei = proben::oeffnen(u"jet4-relationen.mdb"_qs);
    const jet::Tabelle t = jet::tdefLesen(*datei, 27);
    EXPECT_EQ(t.zeilen, 3u);
    EXPECT_EQ(t.maxSpalten, 2);
    EXPECT_EQ(t.besitz, (jet::Zeilenort{30, 0}));
    EXPECT_EQ(t.frei, (jet::Zeilenort{30, 1}));
    ASSERT_EQ(t.echte.size(), 2u);
    EXPECT_EQ(t.echte[0].wurzel, 31u);
    EXPECT_EQ(t.echte[0].verschiedene, 3u);
    EXPECT_EQ(t.echte[1].flags, 0x89);
    EXPECT_EQ(t.echte[1].karte, (jet::Zeilenort{30, 3}));
    ASSERT_EQ(t.logische.size(), 3u);
    EXPECT_EQ(t.logische[0].name, u".rC"_qs);
    EXPECT_EQ(t.logische[0].andereTabelle, 24u);
    EXPECT_EQ(t.logische[0].andererIndex, 2);
    EXPECT_EQ(t.logische[0].kaskadeLoeschen, 1);
    EXPECT_EQ(t.spalten[1].laenge, 100);
    EXPECT_EQ(t.spalten[1].flags2, jet::kSpalteKomprimiert);
}

TEST(JetEigenschaften, EigenesReistHinUndZurueck) {
    const jet::Spalteneigenes vorher{
        true, jet::kTypText, 3, 1, {{u"Caption"_qs, 0, 12, QByteArray("a\0b\0", 4)}}};
    jet::Spalteneigenes nachher;
    ASSERT_TRUE(jet::spalteneigenesLesen(jet::spalteneigenesSchreiben(vorher), nachher));
    EXPECT_EQ(nachher.typ, vorher.typ);
    EXPECT_EQ(nachher.flags, 3);
    EXPECT_EQ(nachher.flags2, 1);
    ASSERT_EQ(nachher.eigenschaften.size(), 1u);
    EXPECT_EQ(nachher.eigenschaften[0].name, u"Caption"_qs);
    EXPECT_EQ(nachher.eigenschaften[0].wert, vorher.eigenschaften[0].wert);
    EXPECT_FALSE(jet::spalteneigenesLesen(QByteArray("fremd"), nachher));
    EXPECT_FALSE(jet::spalteneigenesLesen(jet::spalteneigenesSchreiben(vorher).chopped(1), nachher));
}

TEST(JetEigenschaften, BeschaedigterRestWirdWeggelassen) {
    PROBE_ODER_UEBERSPRINGEN(u"jet4-memo-ole.mdb"_qs);
    const auto datei = proben::oeffnen(u"jet4-memo-ole.mdb"_qs);
    for (const jet::Objekt& o : jet::objekteLesen(*datei)) {
        if (o.name != u"MSP_PROJECTS") continue;
        const auto alle = jet::eigenschaftenLesen(datei->format(), o.eigenschaften);
        ASSERT_GT(alle.size(), 2u);
        const auto halb =
            jet::eigenschaftenLesen(datei->format(), o.eigenschaften.left(o.eigenschaften.size() / 2));
        EXPECT_LT(halb.size(), alle.size());
        EXPECT_TRUE(jet::eigenschaftenLesen(jet::kJet3, o.eigenschaften).empty());
    }
}
