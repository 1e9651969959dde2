#ifndef CATApplicationFrame_H
#define CATApplicationFrame_H

#include "CATBaseUnknown.h"

/** The application's main window; answers CATIAApplication. */
class ExportedByCatia CATApplicationFrame : public CATBaseUnknown {
public:
    /** No reference is added; null is possible. */
    static CATApplicationFrame* GetFrame();

protected:
    ~CATApplicationFrame() override = default;
};

#endif
