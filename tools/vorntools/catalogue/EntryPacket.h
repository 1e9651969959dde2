#ifndef TOOLS_VORNTOOLS_CATALOGUE_ENTRY_PACKET_H
#define TOOLS_VORNTOOLS_CATALOGUE_ENTRY_PACKET_H

#include "tools/vorntools/archive/DocumentPacket.h"
#include "tools/vorntools/catalogue/CatalogueEntry.h"

template <class Move>
void transfer(Move& move, ContentsEntry& entry) {
    move(entry.name, entry.parent, entry.isStream, entry.size, entry.pieces, entry.dates[0], entry.dates[1],
         entry.dates[2]);
}

template <class Move>
void transfer(Move& move, CatalogueEntry& entry) {
    move(entry.facts, entry.streams, entry.preview, entry.journal);
}

#endif
