// The maker's addresses and the ways to reach them.
#pragma once

#include <QString>

QString Internetadresse();
QString Mailadresse();

// Open the web page and a prepared mail with the desktop's own programs; tell the address when there is none.
void InternetseiteOeffnen();
void SupportSchreiben();
