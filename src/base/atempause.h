// The breathing hook: long engine operations call it so that the window can answer meanwhile.
#pragma once

#include <functional>

// Sets what `Atempause` does (set once at start by the program; an empty function switches it off).
void AtempauseSetzen(std::function<void()> haken);

// Called by every loop of the engine that can run longer than some milliseconds, once per row or page.
// Cheap: the hook itself runs at most every few milliseconds. The hook may throw; the operation then
// ends with that exception and leaves nothing half done. While the hook runs, nested calls do nothing.
void Atempause();
