// The maker's addresses, the handbook, and the ways to reach them.
#pragma once

#include <QString>

QString Internetadresse();
QString Mailadresse();

// Open the web page and a prepared mail with the desktop's own programs; tell the address when there is none.
void InternetseiteOeffnen();
void SupportSchreiben();

// The handbook's file; empty when the program came without one.
QString Handbuchdatei();
// Shows it in the desktop's own program; tells where it is when there is none.
void HandbuchOeffnen();
