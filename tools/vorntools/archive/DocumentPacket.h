#ifndef TOOLS_VORNTOOLS_ARCHIVE_DOCUMENT_PACKET_H
#define TOOLS_VORNTOOLS_ARCHIVE_DOCUMENT_PACKET_H

// What is known of documents, for Packet.h.

#include "tools/vorntools/archive/Archive.h"

template <class Move>
void transfer(Move& move, FoundDocument& found) {
    move(found.name, found.fullName, found.exists, found.hasDat);
}

template <class Move>
void transfer(Move& move, DocumentStatus& status) {
    move(status.document, status.dat, status.layout, status.itemRevision, status.dataset, status.namedReference,
         status.loadType, status.status, status.reason, status.linked, status.unresolved, status.designTable);
}

template <class Move>
void transfer(Move& move, NamedDocument& document) {
    move(document.name, document.exists, document.stored, document.uses);
}

template <class Move>
void transfer(Move& move, OtherNamed& other) {
    move(other.kind, other.document, other.uses);
}

template <class Move>
void transfer(Move& move, TypedLink& link) {
    move(link.type, link.document, link.reference, link.tagFound);
}

template <class Move>
void transfer(Move& move, DocumentCondition& condition) {
    move(condition.text, condition.isFinding);
}

template <class Move>
void transfer(Move& move, DocumentLinks& links) {
    move(links.read, links.condition, links.version, links.release, links.servicePack, links.savedPath, links.save,
         links.partFiles, links.contextProducts, links.contextParts, links.externalReferences, links.links,
         links.others, links.ghosts);
}

template <class Move>
void transfer(Move& move, RecordedName& recorded) {
    move(recorded.kind, recorded.name);
}

template <class Move>
void transfer(Move& move, RecordedLinks& recorded) {
    move(recorded.tellsLinks, recorded.names);
}

template <class Move>
void transfer(Move& move, LinkDifference& difference) {
    move(difference.kind, difference.name);
}

template <class Move>
void transfer(Move& move, DocumentIdentity& identity) {
    move(identity.uuid, identity.save, identity.saved);
}

template <class Move>
void transfer(Move& move, DocumentFacts& facts) {
    move(facts.found, facts.role, facts.size, facts.modified, facts.status, facts.links, facts.recorded, facts.identity,
         facts.checksum);
}

#endif
