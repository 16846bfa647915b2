// Groups of duplicates: connected pairs, the list of their records, and the program's own sort of that list.
#pragma once

#include <QtGlobal>
#include <vector>

// Two records (by TEMP_DSN) that were found alike; the group is 0 until GruppenBilden has numbered it.
struct Paar {
    qint32 erster = 0;
    qint32 zweiter = 0;
    qint32 gruppe = 0;
    bool operator==(const Paar&) const = default;
};

// A record found as a duplicate, and its group.
struct Dublette {
    qint32 satz = 0;
    qint32 gruppe = 0;
    bool operator==(const Dublette&) const = default;
};

// Numbers the groups from 1 in the order of their first pairs. A group is a connected component: what is
// alike by way of others belongs together. Lets the window breathe, as do the others here.
void GruppenBilden(std::vector<Paar>& paare);

// Every record of the pairs once, in the order in which they first stand there, with its group.
std::vector<Dublette> DublettenAuflisten(const std::vector<Paar>& paare);

// Sorts by group, then by record, with a pivot that is a place and not a value: a swap that touches the place
// changes the pivot, so that a longer list need not end sorted. What follows relies on runs of equal groups
// only.
void DublettenSortieren(std::vector<Dublette>& dubletten);
