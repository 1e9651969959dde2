#ifndef FOUNDATION_ENVIRONMENT_H
#define FOUNDATION_ENVIRONMENT_H

#include "CATUnicodeString.h"
#include "ENVManager.h"
#include "PROCManager.h"

namespace vorntools {

/** A switch of the environment; off without a manager. */
inline bool environmentSays(unsigned char (ENVManager::*i_question)()) {
    ENVManager* const p_environment = ENVManager::getInstance();
    return p_environment && (p_environment->*i_question)() != 0;
}

/** A text of the environment; empty without a manager. */
inline CATUnicodeString environmentText(CATUnicodeString (ENVManager::*i_question)()) {
    ENVManager* const p_environment = ENVManager::getInstance();
    return p_environment ? (p_environment->*i_question)() : CATUnicodeString();
}

/** What the integration is doing; nothing without a manager. */
inline bool processSays(unsigned char (PROCManager::*i_question)()) {
    PROCManager* const p_process = PROCManager::getInstance();
    return p_process && (p_process->*i_question)() != 0;
}

} // namespace vorntools

#endif
