// Damage of indexes, definitions and the catalogue, each told by name.
#include "schaeden.h"

using namespace schaeden;

namespace {

// Root page and table of the first index with an inner page.
quint32 innereFinden(const Seitendatei& d) {
    for (quint32 seite = 2; seite < d.seitenzahl(); ++seite)
        if (d.seite(seite)[0] == char(jet::kInnereIndexseite) && d.seite(seite)[1] == 1) return seite;
    ADD_FAILURE() << "no inner page";
    return 0;
}

quint32 kindVon(const Seitendatei& d, quint32 innere) {
    return jet::Sicht(d.seite(innere), u"", innere).u32(d.format().indexLetztesKind);
}

int ersterEintragEnde(const Seitendatei& d, quint32 seite) {
    const jet::Sicht s(d.seite(seite), u"", seite);
    for (int i = 0;; ++i)
        if (s.u8(d.format().indexMaske + i / 8) >> i % 8 & 1) return d.format().indexEintraege + i;
}

std::vector<Fall> indexfaelle() {
    return {
        {"entries swapped", kBeziehungen,
         [](auto& d) { vertauschen(d, kIndex, kEintraege, kEintraege + kEintrag, kEintrag); },
         u"Table2, Seite 31: Index »id«: die Einträge sind nicht in Ordnung"_qs},
        {"entry to no row", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, kEintraege + 3 * kEintrag - 1, quint8(7)); },
         u"Index »id«: Einträge führen zu Zeilen, die es nicht gibt"_qs},
        {"key of another value", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, kEintraege + 2 * kEintrag + 4, quint8(9)); },
         u"Table2, Seite 60: Index »id«: der Schlüssel von Zeile 2 passt nicht zu ihren Werten"_qs},
        {"keys of two rows exchanged", kBeziehungen,
         [](auto& d) {
             setzen(d, kIndex, kEintraege + kEintrag - 1, quint8(1));
             setzen(d, kIndex, kEintraege + 2 * kEintrag - 1, quint8(0));
         },
         u"Table2, Seite 60: Index »id«: der Schlüssel von Zeile 1 passt nicht zu ihren Werten"_qs},
        {"two entries to one row", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, kEintraege + kEintrag - 1, quint8(1)); },
         u"Index »id«: Einträge führen zu Zeilen, die es nicht gibt"_qs},
        {"equal keys in a unique index", kBeziehungen,
         [](auto& d) {
             // Both the row and its entry say so.
             setzen(d, kDaten, zeileAb(d, {kDaten, 1}) + 2, quint32(0));
             setzen(d, kZweiterIndex, kEintraege + kEintrag + 4, quint8(0));
             setzen(d, kIndex, kEintraege + kEintrag + 4, quint8(0));
         },
         u"Table2, Seite 32: Index »PrimaryKey«: ein Schlüssel kommt zweimal vor"_qs},
        {"entry missing", kBeziehungen,
         [](auto& d) {
             setzen(d, kIndex, d.format().indexMaske + 3, quint8(0));
             setzen(d, kIndex, 2, quint16(3616 - 2 * kEintrag));
         },
         u"Table2, Seite 31: Index »id«: 2 Einträge für 3 Zeilen"_qs},
        {"free bytes of an index page", kBeziehungen, [](auto& d) { setzen(d, kIndex, 2, quint16(3000)); },
         u"Table2, Seite 31: Index »id«: 3000 freie Bytes sind vermerkt, 3589 sind frei"_qs},
        {"index page of another table", kBeziehungen, [](auto& d) { setzen(d, kIndex, 4, quint32(24)); },
         u"Index »id«: die Seite nennt eine andere Tabelle (Seite 24)"_qs},
        {"leaf with a neighbour in front", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, d.format().indexVorige, kZweiterIndex); },
         u"Index »id«: die vorige Seite ist als 32 vermerkt, sie ist 0"_qs},
        {"leaf with a neighbour behind", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, d.format().indexNaechste, kZweiterIndex); },
         u"Index »id«: hinter dem letzten Blatt steht Seite 32"_qs},
        {"leaf with a child", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, d.format().indexLetztesKind, kZweiterIndex); },
         u"Index »id«: ein Blatt hat ein Kind"_qs},
        {"root missing in the map", kBeziehungen,
         [](auto& d) {
             bitSetzen(d, {kKarten, kBesitzIndex}, kIndex, false);
         },
         u"Table2, Seite 31: Index »id«: die Seite steht nicht in der Karte"_qs},
        {"prefix longer than the first entry", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, d.format().indexPraefix, quint16(100)); },
         u"Index »id«: der gemeinsame Anfang ist länger als der erste Eintrag"_qs},
        {"entry shorter than a place", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, d.format().indexMaske, quint8(1 << 2)); },
         u"Table2, Seite 31: nicht lesbar: Table2, Seite 31, Stelle 480"_qs},
        {"entry ends behind the page", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, d.format().indexMaske + 452, quint8(0x80)); },
         u"Table2, Seite 31: nicht lesbar: Table2, Seite 31"_qs},
        {"index page that is none", kBeziehungen, [](auto& d) { setzen(d, kIndex, 0, quint8(1)); },
         u"Table2, Seite 31: nicht lesbar: Table2, Seite 31, Stelle 0"_qs},
        {"level of a leaf", kBeziehungen,
         [](auto& d) { setzen(d, kIndex, d.format().indexEbene, quint8(2)); },
         u"Index »id«: die Ebene ist 2 statt 0"_qs},
        {"last child missing", kDreier,
         [](auto& d) { setzen(d, innereFinden(d), d.format().indexLetztesKind, quint32(0)); },
         u"Seite 0: Index »"_qs},
        {"page that is its own child", kDreier,
         [](auto& d) { setzen(d, innereFinden(d), d.format().indexLetztesKind, innereFinden(d)); },
         u"die Seite steht nicht in der Karte oder kommt zweimal vor"_qs},
        {"page off the tree", kDreier,
         [](auto& d) {
             // The tree is cut down to its last leaf.
             const quint32 innere = innereFinden(d);
             const int maske = d.format().indexMaskeLaenge;
             for (int i = 0; i < maske; ++i) setzen(d, innere, d.format().indexMaske + i, quint8(0));
         },
         u"die Seite hängt nicht am Baum"_qs},
        {"chain of leaves cut", kDreier,
         [](auto& d) { setzen(d, kindVon(d, innereFinden(d)), d.format().indexVorige, quint32(0)); },
         u"die vorige Seite ist als 0 vermerkt"_qs},
        {"inner entry that is not the last below", kDreier,
         [](auto& d) {
             const quint32 innere = innereFinden(d);
             const int ab = ersterEintragEnde(d, innere) - 5;  // row of its place
             setzen(d, innere, ab, quint8(quint8(d.seite(innere)[ab]) + 1));
         },
         u"ein Eintrag nennt nicht den letzten der Seite darunter"_qs},
        {"level of an inner page", kDreier,
         [](auto& d) { setzen(d, innereFinden(d), d.format().indexEbene, quint8(3)); },
         u"die Ebene ist 3 statt 1"_qs},
    };
}

std::vector<Fall> definitionsfaelle() {
    return {
        {"length of the definition", kBeziehungen, [](auto& d) { setzen(d, kDefinition, 8, quint32(380)); },
         u"Table2, Seite 27: die Definition ist als 380 Bytes lang vermerkt, sie hat 379"_qs},
        {"free bytes of a definition", kBeziehungen, [](auto& d) { setzen(d, kDefinition, 2, quint16(1)); },
         u"Table2, Seite 27: 1 freie Bytes sind vermerkt, 3709 sind frei"_qs},
        {"definition with a page too many", kBeziehungen,
         [](auto& d) {
             const quint32 neue = d.anhaengen();
             QByteArray seite(d.format().seite, '\0');
             d.schreiben(neue, seite.replace(0, 2, "\x02\x01"));
             bitSetzen(d, {1, 0}, neue, false);
             setzen(d, kDefinition, 4, neue);
         },
         u"Table2, Seite 27: die Definition hat 2 Seiten"_qs},
        {"relation without its other side", kBeziehungen,
         [](auto& d) { setzen(d, kDefinition, 0x101 + 4, quint32(9)); },
         u"hat auf Seite 27 keine Gegenseite"_qs},
        {"two indexes of one number", kBeziehungen,
         [](auto& d) { setzen(d, kDefinition, 0x11D + 4, quint32(1)); },
         u"Table2, Seite 27: zwei Indexe haben die Nummer 1"_qs},
        {"two columns on the same bytes", kLange,
         [](auto& d) {
             const jet::Tabelle t = jet::tabelleLesen(d, u"MSP_PROJECTS"_qs);
             std::vector<int> feste;
             for (size_t i = 0; i < t.spalten.size(); ++i)
                 if (t.spalten[i].istFest() && t.spalten[i].typ == jet::kTypLong) feste.push_back(int(i));
             spalteSetzen(d, u"MSP_PROJECTS"_qs, feste[1], d.format().spalteFest,
                          t.spalten[size_t(feste[0])].fest);
         },
         u"zwei Spalten liegen auf denselben Bytes"_qs},
        {"two columns with one variable value", kLange,
         [](auto& d) {
             const jet::Tabelle t = jet::tabelleLesen(d, u"MSP_PROJECTS"_qs);
             std::vector<int> texte;
             for (size_t i = 0; i < t.spalten.size(); ++i)
                 if (!t.spalten[i].istFest() && t.spalten[i].typ == jet::kTypText) texte.push_back(int(i));
             spalteSetzen(d, u"MSP_PROJECTS"_qs, texte[1], d.format().spalteVariabel,
                          t.spalten[size_t(texte[0])].variabel);
         },
         u"zwei Spalten teilen sich den variablen Wert"_qs},
        {"two columns of one name", kBeziehungen,
         [](auto& d) {
             QByteArray seite = d.seite(kDefinition);
             // "id" and "data" become "id" and "id", the rest moves down.
             seite.replace(0x8F, 10, QByteArray("\x04\0i\0d\0", 6)).append(4, '\0');
             d.schreiben(kDefinition, seite);
         },
         u"Table2, Seite 27: zwei Spalten heißen »id«"_qs},
        {"two indexes of one name", kBeziehungen,
         [](auto& d) {
             QByteArray seite = d.seite(kDefinition);
             seite.replace(0x155, 8, QByteArray("\x04\0i\0d\0", 6)).append(2, '\0');
             d.schreiben(kDefinition, seite);
         },
         u"Table2, Seite 27: zwei Indexe heißen »id«"_qs},
        {"long column without maps", kLange,
         [](auto& d) {
             // A text column becomes a memo column, which nothing else knows of.
             const jet::Tabelle t = jet::tabelleLesen(d, u"MSP_PROJECTS"_qs);
             for (size_t i = 0; i < t.spalten.size(); ++i) {
                 if (t.spalten[i].istFest() || t.spalten[i].typ != jet::kTypText) continue;
                 const qsizetype ab = d.seite(t.seite()).indexOf(t.spalten[i].roh);
                 return setzen(d, t.seite(), int(ab), quint8(jet::kTypMemo));
             }
         },
         u"hat keine Langwertkarten"_qs},
        {"long value maps of a column that is not long", kLange,
         [](auto& d) {
             const jet::Tabelle t = jet::tabelleLesen(d, u"MSP_PROJECTS"_qs);
             for (const jet::Spalte& s : t.spalten) {
                 if (s.typ != jet::kTypMemo) continue;
                 const qsizetype ab = d.seite(t.seite()).indexOf(s.roh);
                 return setzen(d, t.seite(), int(ab), quint8(jet::kTypBinaer));
             }
         },
         u"falsche Langwertkarten für Spalte"_qs},
    };
}

std::vector<Fall> katalogfaelle() {
    return {
        {"table whose definition is none", kBeziehungen,
         [](auto& d) { objektZahlSetzen(d, u"Table2"_qs, u"Id", qint32(kDaten)); },
         u"nicht lesbar: Tabellendefinition, Seite 60"_qs},
        {"table beyond the end", kBeziehungen,
         [](auto& d) { objektZahlSetzen(d, u"Table2"_qs, u"Id", 5000); },
         u"nicht lesbar: Tabellendefinition, Seite 5000"_qs},
        {"two tables with one definition", kBeziehungen,
         [](auto& d) { objektZahlSetzen(d, u"Table2"_qs, u"Id", 24); },
         u"hat die Nummer 24 eines anderen Objekts"_qs},
        {"container that is not there", kBeziehungen,
         [](auto& d) { objektZahlSetzen(d, u"Table2"_qs, u"ParentId", 4711); },
         u"»Table2« liegt in einem Behälter, den es nicht gibt"_qs},
        {"containers in a ring", kBeziehungen,
         [](auto& d) {
             objektZahlSetzen(d, u"Tables"_qs, u"ParentId", 0x0F000002);
             objektZahlSetzen(d, u"Databases"_qs, u"ParentId", 0x0F000001);
         },
         u"die Behälter von »Table2« enden nicht"_qs},
        {"catalogue without itself", kBeziehungen,
         [](auto& d) { objektZahlSetzen(d, u"MSysObjects"_qs, u"Id", 24); },
         u"MSysObjects, Seite 2: MSysObjects steht nicht im Verzeichnis"_qs},
        {"two tables of one name", kBeziehungen,
         [](auto& d) {
             for (const jet::Objekt& o : jet::objekteLesen(d)) {
                 if (o.name != u"Table2") continue;
                 const QByteArray name("T\0a\0b\0l\0e\0002", 11);
                 const qsizetype ab = d.seite(o.ort.seite).indexOf(name, zeileAb(d, o.ort));
                 ASSERT_GE(ab, 0);
                 setzen(d, o.ort.seite, int(ab) + 10, '1');
             }
         },
         u"zwei Objekte heißen »Table1«"_qs},
        {"catalogue unreadable", kBeziehungen,
         [](auto& d) { setzen(d, 2, d.format().tdefSpalten, quint16(9999)); },
         u"MSysObjects, Seite 2: nicht lesbar"_qs},
    };
}

}  // namespace

TEST(JetPruefer, MeldetJedenSchadenAnDenIndexen) {
    faellePruefen(indexfaelle());
}

TEST(JetPruefer, MeldetJedenSchadenAnDefinitionen) {
    faellePruefen(definitionsfaelle());
}

TEST(JetPruefer, MeldetJedenSchadenAmKatalog) {
    faellePruefen(katalogfaelle());
}
