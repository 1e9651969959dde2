#include "VornDebugOptions.h"

#include "embedded/services/EnvironmentAnswers.h"

int VornDebugOptions::getDebugModeValue() { return embedded::environment().debugMode ? 1 : 0; }
