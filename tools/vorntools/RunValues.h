#ifndef TOOLS_VORNTOOLS_RUN_VALUES_H
#define TOOLS_VORNTOOLS_RUN_VALUES_H

#include "tools/vorntools/RunCommand.h"

#include "CATISpecObject.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "CATListOfCATUnicodeString.h"

/** Options of the topics that read and write values. */
struct ValueOptions {
    std::string object; ///< the only one that is asked for; empty: all
    std::vector<std::string> assignments;
    std::string save;
};

/** What is to be written, as the library takes it: parallel lists. */
struct Assignments {
    CATListValCATUnicodeString names, values, types;
};

/** Parses "name=value:type": the type is one letter of s, i, b and d behind the last colon, the name ends at the first
 * equals sign. False, and said on standard error, for any other text. */
bool parseAssignments(const std::vector<std::string>& texts, Assignments& assignments);

/** Saves the session unless no file was asked for. @return the exit code, `code` when nothing failed */
int saveSession(const std::string& file, int code);

/** All products, or the one that is asked for; false, and said on standard error, when there is none of that path. */
bool chooseProducts(const std::string& path, std::vector<ListedProduct>& products);

/** The parameters of a feature's set as parallel lists; empty without a set. */
class ParameterList {
public:
    /** @param feature null: none */
    explicit ParameterList(CATISpecObject* feature);
    /** Gives the parameter of a name another value; false when there is none or it refuses. */
    bool update(const CATUnicodeString& name, const CATUnicodeString& value, const CATUnicodeString& type) const;

    CATListValCATUnicodeString names, values, types, flags;

private:
    std::unique_ptr<CATListValCATBaseUnknown_var> m_parameters;
};

/** Adds a topic with --set and --save. @param option names the only object, such as "--product"; --set needs it
 * @param path what the option takes, such as "PRODUCT" */
void addValueTopic(Topics& topics, const char* name, const char* description, const char* option, const char* path,
                   int (*run)(bool json, const ValueOptions& options));

#endif
