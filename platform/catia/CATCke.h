#ifndef CATCke_H
#define CATCke_H

#include "ExportedByCatia.h"

/** Names of the knowledgeware. */
class ExportedByCatia CATCke {
public:
    /** A truth value; 0 and 1 may stand for it. */
    class Boolean {
    public:
        Boolean() : m_value(0) {}
        Boolean(int iValue) : m_value(iValue != 0) {}
        operator int() const { return m_value; }

    private:
        int m_value;
    };

    static const Boolean True;
    static const Boolean False;
};

#endif
