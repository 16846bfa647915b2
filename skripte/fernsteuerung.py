"""Client of lindgarn-fernsteuerung: starts the real program and drives its real window, command by command."""
import contextlib
import json
import subprocess
import time


# How long something may take on a machine that has much else to do, in milliseconds.
GEDULD = 180000


class Fernsteuerung:
    """One running program. Commands are methods or `befehl`; a command that fails raises `Abgelehnt`."""

    class Abgelehnt(Exception):
        pass

    def __init__(self, programm, umgebung=None, fehlerausgabe=None):
        self._nr = 0
        self._prozess = subprocess.Popen(
            [str(programm)],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=fehlerausgabe,
            text=True,
            encoding="utf-8",
            env=umgebung,
        )

    def __enter__(self):
        return self

    def __exit__(self, *_):
        """Ends the program if it still runs; may be called again."""
        with contextlib.suppress(BrokenPipeError):
            self._prozess.stdin.close()
        try:
            self._prozess.wait(20)
        except subprocess.TimeoutExpired:
            self._prozess.kill()
            self._prozess.wait()
        self._prozess.stdout.close()

    @property
    def prozess(self):
        return self._prozess

    def befehl(self, cmd, **felder):
        """Sends one command and returns its result."""
        return self._antwort(self._senden(cmd, felder))

    def _senden(self, cmd, felder):
        self._nr += 1
        zeile = json.dumps({"id": self._nr, "cmd": cmd, **felder}, ensure_ascii=False)
        self._prozess.stdin.write(zeile + "\n")
        self._prozess.stdin.flush()
        return zeile

    def _antwort(self, zeile):
        antwort = self._prozess.stdout.readline()
        if not antwort:
            raise RuntimeError(f"Das Programm ist beendet (bei {zeile}).")
        antwort = json.loads(antwort)
        if "error" in antwort:
            raise self.Abgelehnt(f"{zeile}: {antwort['error']}")
        return antwort.get("result")

    def im_lauf(self, phase, cmd, **felder):
        """Starts the prepared run and gives a command while it tells of `phase`; "" is any.

        All is sent at once, since a run may be over before an answer has come and the next command has gone.
        False when it was over before the phase was seen.
        """
        zeilen = [
            self._senden("klicken", {"objekt": "btnWeiter"}),
            self._senden("warten", {"auf": "rahmen", "wert": 6, "ms": GEDULD}),
            self._senden("warten", {"auf": "phase", "wert": phase, "ms": GEDULD}),
            self._senden(cmd, felder),
        ]
        for zeile in zeilen[:2]:
            self._antwort(zeile)
        erfolg = True
        for zeile in zeilen[2:]:
            try:
                self._antwort(zeile)
            except self.Abgelehnt:
                erfolg = False
        return erfolg

    def klicken(self, objekt):
        return self.befehl("klicken", objekt=objekt)

    def setzen(self, objekt, wert):
        return self.befehl("setzen", objekt=objekt, wert=wert)

    def lesen(self, objekt):
        return self.befehl("lesen", objekt=objekt)

    def text(self, objekt):
        return self.lesen(objekt)["text"]

    def gitter(self, objekt):
        return self.befehl("gitter", objekt=objekt)

    def warten(self, auf, wert=None, ms=GEDULD):
        felder = {"auf": auf, "ms": ms}
        if wert is not None:
            felder["wert"] = wert
        return self.befehl("warten", **felder)

    def aktiv_abwarten(self, objekt, ms=GEDULD):
        """Returns as soon as a control may be used; a review gives its keys free when what it does is done."""
        ende = time.monotonic() + ms / 1000
        while not self.lesen(objekt)["aktiv"]:
            if time.monotonic() > ende:
                raise TimeoutError(f"{objekt} does not become active")

    def rahmen(self, nummer, ms=GEDULD):
        return self.warten("rahmen", nummer, ms)

    def meldung(self):
        return self.befehl("meldung")

    def druecken(self, knopf, **felder):
        return self.befehl("druecken", knopf=knopf, **felder)

    def zustand(self):
        return self.befehl("zustand")

    def bild(self, datei):
        return self.befehl("bild", datei=str(datei))
