#ifndef CATErrorMacros_H
#define CATErrorMacros_H

// The one way to deal with errors that the platform throws: its own headers forbid the words behind these macros. A
// pointer that is caught is released by the one who caught it; without CATCatchOthers everything else passes on.
// Proposed: what they stand for.
#define CATTry try
#define CATCatch(ErrorClass, pError) catch (ErrorClass * pError)
#define CATCatchOthers catch (...)
#define CATEndTry
#define CATThrow(pError) throw(pError)
#define CATRethrow throw

#endif
