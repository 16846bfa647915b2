"""A program one of whose file operations fails: the shared page of tests/stoerung, and the environment for it."""
import mmap
import os
import pathlib
import struct

import gemeinsam

BIBLIOTHEK = pathlib.Path(gemeinsam.PROGRAMM).with_name("stoerung.so")
AN, ANZAHL, FEHLER_BEI, DAUER, AUSGELOEST, UMBENANNT, LETZTE = 0, 4, 8, 12, 16, 20, 24
OHNE_ENDE = 0x7FFFFFFF


class Stoerung:
    """`ordner` is watched; the page lies beside it."""

    def __init__(self, ordner, seite):
        seite.write_bytes(bytes(4096))
        self._datei = open(seite, "r+b")
        self._seite = mmap.mmap(self._datei.fileno(), 4096)
        self.umgebung = {
            "LD_PRELOAD": str(BIBLIOTHEK),
            "LINDGARN_STOERUNG": str(seite),
            "LINDGARN_STOERUNG_ORDNER": str(ordner),
            # The sanitizers of an instrumented build want to be loaded first.
            "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0",
        }

    def _lesen(self, stelle):
        return struct.unpack_from("<I", self._seite, stelle)[0]

    def _schreiben(self, stelle, wert):
        struct.pack_into("<I", self._seite, stelle, wert)

    def beginnen(self, fehler_bei=0, dauer=1):
        """Counts from now on; operation number `fehler_bei` fails, and `dauer` - 1 more behind it."""
        for stelle, wert in (
            (AN, 0),
            (ANZAHL, 0),
            (FEHLER_BEI, fehler_bei),
            (DAUER, dauer),
            (AUSGELOEST, 0),
            (UMBENANNT, 0),
            (AN, 1),
        ):
            self._schreiben(stelle, wert)

    def beenden(self):
        """Returns how many operations there were and how many of them failed."""
        self._schreiben(AN, 0)
        return self._lesen(ANZAHL), self._lesen(AUSGELOEST)

    def heilen(self):
        """Lets everything succeed again, and goes on counting."""
        self._schreiben(FEHLER_BEI, 0)

    @property
    def umbenannt(self):
        """The number of the last renaming since `beginnen`, 0 for none."""
        return self._lesen(UMBENANNT)

    @property
    def letzte(self):
        """The operation that failed last."""
        return bytes(self._seite[LETZTE : LETZTE + 256]).split(b"\0")[0].decode()

    def schliessen(self):
        self._seite.close()
        self._datei.close()
