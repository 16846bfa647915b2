// The settings file: the weights of the field kinds and the two thresholds.
#pragma once

#include <QString>
#include <optional>

// Fills `gFeldArten`, `gFeldGruppen`, `gRelevanz` and `gSignifikanz`: with the built-in weights when there is
// no text; otherwise with weight 0 everywhere and then with what the text sets. Nothing in the text is an
// error.
void EinstellungenAnwenden(const std::optional<QString>& text);

// The bytes as a text: UTF-8 when they are valid UTF-8 (a byte order mark is skipped), else Windows-1252.
QString TextAusBytes(const QByteArray& bytes);
