// How calls of the platform end: their texts, and what a failing one leaves in its outputs.
#ifndef EMBEDDED_OBJECT_ANSWERS_H
#define EMBEDDED_OBJECT_ANSWERS_H

#include "CATBSTR.h"
#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "embedded/Failures.h"
#include "embedded/text/TextBytes.h"

#include <string>
#include <utility>

namespace embedded {

/** A platform text from UTF-8 bytes, NUL bytes included. */
inline CATUnicodeString toText(std::string bytes) { return TextBytes::textOf(std::move(bytes)); }

/** The UTF-8 bytes of a platform text. */
inline std::string toBytes(const CATUnicodeString& text) { return TextBytes::of(text); }

/** How a failing call with a result code and one output ends: the output is cleared or filled with `stale`. */
template <class Output>
HRESULT failedAnswer(FaultFlavour flavour, Output& output, const Output& cleared, const Output& stale) {
    output = flavour == FaultFlavour::codeWithOutput ? stale : cleared;
    return Failures::get().codeOf(flavour);
}

/** Ends a call that gives a text: the value, or what the flavour demands ("stale" for a filled output). */
HRESULT textAnswer(FaultFlavour flavour, const std::string& value, CATUnicodeString& output);

/** Ends a call that gives an automation text. What a failing call leaves in the output must not be freed. */
HRESULT automationTextAnswer(FaultFlavour flavour, const std::string& value, CATBSTR& output);

/** A new automation text, counted until CATFreeString. */
CATBSTR newAutomationText(const std::string& bytes);

/** The characters of an automation text as UTF-8 bytes; empty for null. */
std::string fromAutomationText(CATBSTR text);

} // namespace embedded

#endif
