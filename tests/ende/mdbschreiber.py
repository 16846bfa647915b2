"""Changes rows of an .mdb file through libmdb, as another program would between two sessions.

The library of mdbtools adds rows to pages with room, and replaces a text that no index holds by another
one (never Null). It does not count the rows anew.
"""
import contextlib
import ctypes
import functools

TABELLE = 1
SCHREIBBAR = 1


class Feld(ctypes.Structure):
    """A value of a row to be added (MdbField)."""

    _fields_ = [
        ("wert", ctypes.c_void_p), ("groesse", ctypes.c_int), ("anfang", ctypes.c_int), ("ist_null", ctypes.c_ubyte),
        ("ist_fest", ctypes.c_ubyte), ("spalte", ctypes.c_int), ("abstand", ctypes.c_int),
    ]  # fmt: skip


@functools.cache
def bibliothek():
    lib = ctypes.CDLL("libmdb.so.3")
    zeiger, zahl = ctypes.c_void_p, ctypes.c_int
    for name, ergebnis, *argumente in (
        ("mdb_open", zeiger, ctypes.c_char_p, zahl),
        ("mdb_close", None, zeiger),
        ("mdb_read_table_by_name", zeiger, zeiger, ctypes.c_char_p, zahl),
        ("mdb_read_columns", zeiger, zeiger),
        ("mdb_read_indices", zeiger, zeiger),
        ("mdb_free_tabledef", None, zeiger),
        ("mdb_bind_column", zahl, zeiger, zahl, zeiger, zeiger),
        ("mdb_rewind_table", zahl, zeiger),
        ("mdb_fetch_row", zahl, zeiger),
        ("mdb_insert_row", zahl, zeiger, zahl, zeiger),
        ("mdb_update_row", zahl, zeiger),
    ):
        getattr(lib, name).restype = ergebnis
        getattr(lib, name).argtypes = argumente
    return lib


class Schreiber:
    """A table of a file; `kodierung` is that of its texts ("cp1252" for Access 97)."""

    def __init__(self, datei, tabelle, kodierung="utf-16-le"):
        self.datei, self.name, self.kodierung = str(datei).encode(), tabelle.encode(), kodierung

    @contextlib.contextmanager
    def tabelle(self):
        """The table as the library reads it; bound columns stay bound for as long as it is open."""
        lib = bibliothek()
        datei = lib.mdb_open(self.datei, SCHREIBBAR)
        assert datei, self.datei
        tabelle = lib.mdb_read_table_by_name(datei, self.name, TABELLE)
        assert tabelle, self.name
        lib.mdb_read_columns(tabelle)
        lib.mdb_read_indices(tabelle)
        yield lib, tabelle
        lib.mdb_free_tabledef(tabelle)
        lib.mdb_close(datei)

    def anfuegen(self, werte):
        """Adds a row: a Long for each whole number, a Text for each text, Null for None."""
        felder, bytes_ = (Feld * len(werte))(), []
        for i, (feld, wert) in enumerate(zip(felder, werte)):
            fest = isinstance(wert, int)
            roh = wert.to_bytes(4, "little", signed=True) if fest else (wert or "").encode(self.kodierung)
            bytes_.append(ctypes.create_string_buffer(roh, len(roh) + 1))
            feld.wert, feld.groesse = ctypes.addressof(bytes_[-1]), len(roh)
            feld.ist_null, feld.ist_fest, feld.spalte = wert is None, fest, i
        with self.tabelle() as (lib, tabelle):
            assert lib.mdb_insert_row(tabelle, len(werte), felder) == 1, werte

    def ersetzen(self, zeile, spalte, text):
        """Replaces the text in a column (from 1) of a row (from 1)."""
        puffer, laenge = ctypes.create_string_buffer(65536), ctypes.c_int()
        roh = text.encode(self.kodierung)
        with self.tabelle() as (lib, tabelle):
            lib.mdb_bind_column(tabelle, spalte, puffer, ctypes.byref(laenge))
            lib.mdb_rewind_table(tabelle)
            for _ in range(zeile):
                assert lib.mdb_fetch_row(tabelle)
            ctypes.memmove(puffer, roh, len(roh))
            laenge.value = len(roh)
            lib.mdb_update_row(tabelle)
