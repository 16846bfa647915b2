// What the application needs before its first window: names, German texts.
#pragma once

// Call once, right after the QApplication was made.
void AnwendungEinrichten();
