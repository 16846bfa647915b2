// The evaluation: groups from pairs, their members marked, one enriched record for each run of a group.
#pragma once

// From the pair list of the search to the finished result table. Sets `gDublettenAnzahl`.
void DublettenAuswerten();
