#ifndef CATFrmNavigGraphicWindow_H
#define CATFrmNavigGraphicWindow_H

#include "CATFrmWindow.h"

class CATNavigBox;

/** A window with a tree over its geometry. A window whose class is a kind of this one may be cast to it. */
class ExportedByCatia CATFrmNavigGraphicWindow : public CATFrmWindow {
public:
    /** No reference is added; null is possible. */
    virtual CATNavigBox* GetNavigBox() = 0;

protected:
    ~CATFrmNavigGraphicWindow() override = default;
};

#endif
