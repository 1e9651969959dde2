#ifndef TOOLS_VORNTOOLS_RUN_COMMAND_H
#define TOOLS_VORNTOOLS_RUN_COMMAND_H

#include "tools/vorntools/Commands.h"
#include "tools/vorntools/Output.h"

#include "embedded/Session.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/** The topics of "vorntools run SESSION TOPIC": each asks the library about the session that was loaded. */
class Topics {
public:
    struct Options {
        std::string session;
        bool json = false;
        std::string journal;
    };

    explicit Topics(CLI::App& command) : m_command(command), m_options(std::make_shared<Options>()) {
        m_command.add_option("session", m_options->session, "Session file")->required()->type_name("SESSION");
        m_command.require_subcommand(1);
    }
    /** Adds a topic. @param run its exit code; the session is loaded by then */
    CLI::App& add(const std::string& name, const std::string& description, std::function<int()> run);
    /** Loads the session and runs the topic that was given; the exit code. */
    int run() const;
    const std::shared_ptr<Options>& options() const { return m_options; }

private:
    CLI::App& m_command;
    std::shared_ptr<Options> m_options;
    std::vector<std::pair<CLI::App*, std::function<int()>>> m_topics;
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
