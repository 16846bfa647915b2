// The topics of the help file.
#pragma once

#include <QString>

// The text of the topic `schluessel` in the help file's whole text, each line ended by CR LF.
//
// A topic is a line that begins with "###", its key, one line that is passed over, and its text up to the
// next such line or the end. A line of ordinary text that equals the key starts a topic as well. Without a
// topic the result says that there is none.
QString HilfeThemaSuchen(const QString& hilfe, const QString& schluessel);

// The key of the topic for the frame `rahmen`, whose caption is `titel`.
QString HilfeSchluessel(int rahmen, const QString& titel);
