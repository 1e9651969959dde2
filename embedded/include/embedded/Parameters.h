#ifndef EMBEDDED_PARAMETERS_H
#define EMBEDDED_PARAMETERS_H

#include "embedded/Session.h"

#include <map>
#include <string>
#include <vector>

class CATICkeParameterSet;
class CATICkeParm;
class CATICkeParmFactory;
class CATIParmPublisher;
class CATISpecObject;

namespace embedded {

class Node;
class ParameterObject;

/** A parameter. Like every name here it holds no reference; calls on a name of nothing do nothing. Pointers are
 * borrowed: from then on the object may be called without a reference. */
class ExportedByCatia Parameter {
public:
    explicit Parameter(ParameterObject* object = nullptr) : m_object(object) {}
    explicit operator bool() const { return m_object != nullptr; }
    CATICkeParm* get() const;
    CATISpecObject* specObject() const;

    /** The name at creation. */
    std::string role() const;
    /** The name that a user gave; empty: none. */
    Parameter& userName(const std::string& name);
    std::string userName() const;
    /** "String", "Integer", "Boolean", "Real" or a magnitude. */
    std::string type() const;
    /** The value in the unit that users see, but in as many digits as it takes; empty without one. */
    std::string shown() const;
    /** 0 not seen, 1 read-only, 2 write-only, 3 read and write (at first), 4 user. */
    Parameter& access(int mode);
    int access() const;
    Parameter& withoutValue();
    /** The value follows from a relation: neither users nor programs can change it. */
    Parameter& driven();
    /** Numbers outside are not taken. In the MKS unit for a dimension. */
    Parameter& range(double least, double most);
    /** A further attribute "ListOfValues" or any other: a list of texts, integers or real numbers. */
    Parameter& list(const std::string& name, const std::vector<std::string>& texts);
    Parameter& list(const std::string& name, const std::vector<int>& numbers);
    Parameter& list(const std::string& name, const std::vector<double>& numbers);
    /** A list as "string: a, b", "integer: 1, 2" or "double: 0.5"; empty when there is none. */
    std::string list(const std::string& name = "ListOfValues") const;

private:
    ParameterObject* m_object;
};

/**
 * An object with parameters below it: a product, the part of a part document, a drawing, a parameter set.
 *
 *     auto part = parametersOf(session.part("/w/Bolt.CATPart"), "MechanicalPart", "Bolt");
 *     auto set = part.addSet("Parameters.1");
 *     set.add("Length", "L1", 0.25).access(1);
 */
class ExportedByCatia Publisher {
public:
    explicit Publisher(Node* node = nullptr) : m_node(node) {}
    explicit operator bool() const { return m_node != nullptr; }
    CATISpecObject* get() const;
    CATIParmPublisher* publisher() const;
    /** Null when the object is no parameter set. */
    CATICkeParameterSet* set() const;
    /** The factory of the container that the object is stored in. */
    CATICkeParmFactory* factory() const;

    std::string name() const;
    Parameter add(const std::string& role, const char* text) const;
    Parameter add(const std::string& role, const std::string& text) const { return add(role, text.c_str()); }
    Parameter add(const std::string& role, int value) const;
    Parameter add(const std::string& role, double value) const;
    Parameter add(const std::string& role, bool value) const;
    /** A dimension. @param value in the MKS unit */
    Parameter add(const std::string& magnitude, const std::string& role, double value) const;
    Publisher addSet(const std::string& name) const;
    /** The list that the objects added from now on stand in, when it is to be another one than usual:
     * "_AttrForLiterals", "_FtrList", "UserParameters". Without effect when there is a list already. */
    Publisher& keepIn(const std::string& attribute);
    /** An attribute for one object of the given kind of set, and the set in it. */
    Publisher addSetAs(const std::string& attribute, const std::string& name) const;
    /** An attribute that holds one text. */
    Publisher& text(const std::string& attribute, const std::string& value);

    std::vector<Parameter> parameters() const;
    std::vector<Publisher> sets() const;
    /** The first parameter with a user's name or, without one, a name at creation; none when absent. */
    Parameter parameter(const std::string& name) const;
    /** How often the tree was told to draw the object's node again. */
    int redraws() const;

private:
    Node* m_node;
};

/** The parameters of a product, kept at this very place. */
ExportedByCatia Publisher parametersOf(const Product& product);
/** Those of a feature of a document, one of each type: "MechanicalPart", "Drawing" (which the drawing services give).
 */
ExportedByCatia Publisher parametersOf(const Document& document, const std::string& type, const std::string& name);
/** The user properties of the reference that a product shows, made on first use. */
ExportedByCatia Publisher userProperties(const Product& product);
/** The same, none when nobody made them. */
ExportedByCatia Publisher existingUserProperties(const Product& product);

/** Definition, revision and nomenclature of the reference. */
struct ReferenceProperties {
    std::string definition;
    std::string revision;
    std::string nomenclature;
};
ExportedByCatia ReferenceProperties referenceProperties(const Product& product);
/** What the platform's own PDM connection was told of the reference, by name. */
ExportedByCatia std::map<std::string, std::string> pdmProperties(const Product& product);

/** The unit in which users see a magnitude; false when the magnitude or the unit is not known. Length: mm (at first),
 * m, cm, km, in. Angle: deg, rad. Mass: kg, g, t. Time: s, min, h. Area: m2, mm2, cm2. Volume: m3, mm3, cm3, L. */
ExportedByCatia bool selectUnit(const std::string& magnitude, const std::string& symbol);

/** Entries of the integration's log file since the session began: title and text, joined by a line break. */
ExportedByCatia std::vector<std::string>& logFile();

} // namespace embedded

#endif
