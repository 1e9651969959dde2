#ifndef CATISpecDeclarations_H
#define CATISpecDeclarations_H

/** What an attribute of a specification object holds. Proposed: the values; the names are published. */
enum CATAttrKind {
    tk_double,
    tk_boolean,
    tk_octet,
    tk_string,
    tk_specobject, ///< a link to an object that lives elsewhere
    tk_list,
    tk_external,
    tk_component, ///< an object that lives in this one
    tk_integer
};

enum CATAttrInOut { sp_NEUTRAL, sp_IN, sp_OUT };

#endif
