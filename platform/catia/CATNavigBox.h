#ifndef CATNavigBox_H
#define CATNavigBox_H

#include "CATBaseUnknown.h"

/** The box of a window that the tree and the geometry are moved in, owned by the window. */
class ExportedByCatia CATNavigBox : public CATBaseUnknown {
protected:
    ~CATNavigBox() override = default;
};

#endif
