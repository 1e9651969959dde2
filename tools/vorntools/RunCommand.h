#ifndef TOOLS_VORNTOOLS_RUN_COMMAND_H
#define TOOLS_VORNTOOLS_RUN_COMMAND_H

#include "tools/vorntools/Commands.h"
#include "tools/vorntools/Output.h"

#include "embedded/Session.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/** The topics of "vorntools run SESSION TOPIC": each asks the library about the session that was loaded. */
class Topics {
public:
    explicit Topics(Command& command);
    /** Adds a topic with "--json" and "--journal". @param run its exit code; the session is loaded by then */
    Command& add(const std::string& name, const std::string& description, std::function<int()> run);
    /** What the topics share. */
    const std::shared_ptr<CommonOptions>& options() const { return m_options; }

private:
    Command& m_command;
    std::shared_ptr<CommonOptions> m_options;
};

/** Prints rows either as objects, with the keys given, or as a table, with the keys in capitals as headings. */
class Listing {
public:
    Listing(bool json, std::vector<const char*> keys) : m_json(json), m_keys(std::move(keys)) {}
    /** One value a key: texts, numbers, truth values, lists of texts. */
    void add(std::vector<Json> values);
    /** Prints the table. */
    void print() const;
    bool empty() const { return m_rows.empty(); }

private:
    const bool m_json;
    const std::vector<const char*> m_keys;
    std::vector<std::vector<std::string>> m_rows;
};

/** Every product of the session that a root leads to, from the root down, with what the library calls its path. */
struct ListedProduct {
    embedded::Product product;
    std::string path;
};
std::vector<ListedProduct> allProducts();
/** The product of a path as allProducts lists it; said on standard error when there is none. */
embedded::Product findProduct(const std::string& path);

void addSessionTopics(Topics& topics);
void addModeTopics(Topics& topics);
void addSceneTopics(Topics& topics);
void addPropertyTopics(Topics& topics);
void addAttributeTopics(Topics& topics);
void addDesignTableTopics(Topics& topics);

#endif
