#ifndef EMBEDDED_STRUCTURE_CONTAINMENT_H
#define EMBEDDED_STRUCTURE_CONTAINMENT_H

namespace embedded {

struct Reference;
struct SessionData;

/**
 * Whether `below` holds `above` somewhere in its structure, itself included. Looks down from the one and up from the
 * other by turns and stops with whichever ends first, so that building an assembly costs little in any order.
 */
bool holds(SessionData& session, Reference& below, Reference& above);

} // namespace embedded

#endif
