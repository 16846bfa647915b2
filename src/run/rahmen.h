// Frames: the one way of going from frame to frame.
#pragma once

#include <QList>

// The frame of a run at work.
inline constexpr int kRahmenDurchfuehrung = 6;

// All frame numbers there are.
const QList<int>& RahmenNummern();

// Closes the old frame and, if that succeeds, opens the new one.
void RahmenWechseln(int alt, int neu, bool pruefen, bool fuellen);
// Button states, filling, visible, `gRahmen`. Failures of the filling go to the error box.
void RahmenOeffnen(int rahmen, bool fuellen);
// Checking, button states, hidden, `gRahmen` = -1. False when a check failed; the frame then stays.
bool RahmenSchliessen(int rahmen, bool pruefen);

// Where btnWeiter and btnZurück lead from the frame on show.
void WeiterGehen();
void ZurueckGehen();
// btnAuswahl(index): sets the operation and leaves frame 5.
void VorgangWaehlen(int index);

// The abort question; sets `gAbbruch` on Yes.
void AbbruchErfragen();

// What btnWeiter starts on the last options frame of an operation (1 to 6). The pieces are put together in
// programm/, since the runs stand above this floor.
using LaufEinstieg = void (*)();
void LaufEinstiegSetzen(int vorgang, LaufEinstieg einstieg);
// True from the start of a run until its entry has returned, whatever frame is on show meanwhile.
bool LaufAktiv();
