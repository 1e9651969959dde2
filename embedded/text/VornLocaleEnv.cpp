#include "VornLocaleEnv.h"

#include "embedded/Session.h"
#include "embedded/object/Answers.h"

using namespace embedded;

CATUnicodeString VornLocaleEnv::getDecimalSeparatorSymbol() {
    return fails("VornLocaleEnv::getDecimalSeparatorSymbol")
               ? CATUnicodeString()
               : toText(Session::current().environment().decimalSeparator);
}
