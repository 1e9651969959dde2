#ifndef TOOLS_VORNTOOLS_ARCHIVE_ARCHIVE_H
#define TOOLS_VORNTOOLS_ARCHIVE_ARCHIVE_H

#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/DocumentStatus.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/archive/DocumentIdentity.h"
#include "tools/vorntools/archive/LinkRule.h"
#include "tools/vorntools/archive/NameIndex.h"
#include "tools/vorntools/archive/RecordedLinks.h"
#include "tools/vorntools/archive/Rows.h"
#include "tools/vorntools/archive/Targets.h"
#include "tools/vorntools/archive/TextPool.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

/** A file: one of the documents that were looked for, or any other that one of them names or might mean. Its texts are
 * numbers of Archive::text. */
struct ArchiveDocument {
    enum Role : std::uint8_t {
        Walked, ///< a document that was found in a folder, or was given
        Named   ///< a file outside these folders, or no CATIA document: a link or a candidate leads to it
    };
    Role role = Walked;
    bool exists = true;        ///< false: a DAT file without its document
    bool hasDat = false;       ///< a DAT file stands beside it
    bool hasLinks = false;     ///< its links were read
    bool isUnreadable = false; ///< its links were asked for and the file cannot be read
    bool isDamaged = false;    ///< the condition is a finding
    bool hasStatus = false;    ///< the fields from status on are known
    bool designTable = false;
    Index name = 0;     ///< as the command line leads to it
    Index fullName = 0; ///< of the same file
    std::uint64_t size = 0;
    std::int64_t modified = 0; ///< seconds since 1970
    Index condition = 0;       ///< in words, as DocumentCondition has them
    int version = 0, release = 0, servicePack = 0;
    Index status = 0, reason = 0; ///< "new", "modified", "not modified", and why
    Index dat = 0, layout = 0, itemRevision = 0, dataset = 0, namedReference = 0, loadType = 0;
    int linked = 0, unresolved = 0; ///< documents in the DAT file
    RowRange links, references, ghosts, recorded, differences;
    bool isFinding = false;    ///< of the state
    Index save = 0;            ///< what copies of one save share; 0: not known
    bool hasIdentity = false;  ///< the fields from uuid on are known
    Index uuid = 0, saved = 0; ///< as in DocumentIdentity, and so is save
    Index checksum = 0;        ///< SHA-256 of its bytes; 0: not known
};

/** Everything about one document, wherever it comes from: what Archive::add takes. */
struct DocumentFacts {
    FoundDocument found;
    ArchiveDocument::Role role = ArchiveDocument::Walked;
    std::uint64_t size = 0;
    std::int64_t modified = 0; ///< seconds since 1970
    /** What the library makes of document and DAT file; none: nobody asked. */
    std::optional<DocumentStatus> status;
    /** None: nobody asked, or no CATIA document. */
    std::optional<DocumentLinks> links;
    /** What the DAT file tells of other documents; taken together with the links. */
    std::optional<RecordedLinks> recorded;
    /** None: whoever wants it reads it. */
    std::optional<DocumentIdentity> identity;
    /** SHA-256 of the bytes as sha256Of has it; empty: nobody has computed it. */
    std::string checksum;
};

/** One document pointed to, with all kinds of links that lead there. */
struct ArchiveLink {
    Index from = 0;           ///< document
    Index stored = 0;         ///< text: the name as stored; the first one when several names mean one file
    Index target = kNoIndex;  ///< document; kNoIndex: missing
    Index missing = kNoIndex; ///< missing target; kNoIndex: found
    LinkRule rule = LinkRule::NotFound;
    std::int32_t uses = 0; ///< pointers of the document that go through the record or records
    RowRange elements;
};

/** A TargetElement, its texts by their numbers. */
struct LinkElement {
    Index kind = 0;
    Index reference = 0;
    bool tagFound = false;
    bool isOther = false;
};

/** A name that a document stores and nothing uses any more. */
struct Ghost {
    Index name = 0;      ///< text: as stored
    bool isLive = false; ///< the document points to a file of that name as well
};

/** A document that the DAT file names. */
struct ArchiveRecorded {
    RecordedName::Kind kind = RecordedName::Linked;
    Index name = 0; ///< text
};

/** A LinkDifference, its text by its number. */
struct ArchiveDifference {
    LinkDifference::Kind kind = LinkDifference::OnlyRecorded;
    Index name = 0;
};

/** A name that is stored somewhere and leads to no file. */
struct MissingTarget {
    Index stored = 0; ///< text
    RowRange links;   ///< those that want it, as Archive::linksTo gives them
};

/**
 * The documents of one or more folders and what they are to each other, in memory: tables whose rows know each other
 * by number, texts kept once. Filled document by document, from folders by ArchiveReader, then finished; only a
 * finished archive can be asked.
 */
class Archive {
public:
    /** How a full name is written for the reader of the output. */
    using Naming = std::function<std::string(const std::string&)>;

    // Filling

    /** @return number of the document. A full name is added once: the first facts stay, links may come later. */
    Index add(const DocumentFacts& facts);
    /** Whether a document of that full name was added. */
    bool has(const std::string& fullName) const;
    /** Brings links and files together.
     * @param otherFiles full names of files that were walked and are no documents: they may be meant by others */
    void finish(const std::vector<std::string>& otherFiles, const Naming& naming);

    // Asking

    std::string_view text(Index number) const { return m_texts[number]; }
    /** In the order of add; behind them what is only named. */
    const std::vector<ArchiveDocument>& documents() const { return m_documents; }
    const ArchiveDocument& document(Index number) const { return m_documents[number]; }
    /** kNoIndex for a name that no document has. */
    Index find(const std::string& fullName) const;
    std::string nameOf(Index document) const { return std::string(m_texts[m_documents[document].name]); }

    /** All links; those of one document are neighbours, one row a target, in the order of the document. */
    const std::vector<ArchiveLink>& links() const { return m_links; }
    Rows<ArchiveLink> linksOf(Index document) const { return rowsOf(m_links, m_documents[document].links); }
    Rows<LinkElement> elementsOf(const ArchiveLink& link) const { return rowsOf(m_elements, link.elements); }
    /** Links that name no document: elements of the assembly that the document uses, imports of an unknown part. */
    Rows<LinkElement> referencesOf(Index document) const {
        return rowsOf(m_references, m_documents[document].references);
    }
    Rows<Ghost> ghostsOf(Index document) const { return rowsOf(m_ghosts, m_documents[document].ghosts); }
    Rows<ArchiveRecorded> recordedOf(Index document) const {
        return rowsOf(m_recorded, m_documents[document].recorded);
    }
    /** Where document and DAT file differ. */
    Rows<ArchiveDifference> differencesOf(Index document) const {
        return rowsOf(m_differences, m_documents[document].differences);
    }
    /** Numbers of the links that lead to a document, by the documents that they come from. */
    Rows<Index> linksTo(Index document) const { return rowsOf(m_users, m_usersOf[document]); }

    const std::vector<MissingTarget>& missing() const { return m_missing; }
    /** Numbers of the links that want a missing target. */
    Rows<Index> linksTo(const MissingTarget& missing) const { return rowsOf(m_missingLinks, missing.links); }
    /** Files of the name of a missing target, as the document of a link sees them; their numbers are those of
     * documents.
     */
    Candidates candidatesOf(const ArchiveLink& link) const;
    /** As the first document that wants it sees them. */
    Candidates candidatesOf(const MissingTarget& missing) const;
    /** How many walked files have the last name of a document, letter case aside. */
    std::size_t countOfName(Index document) const { return m_names.count(text(m_documents[document].fullName)); }
    /** Walked documents that share their last name, letter case aside, with another; each group by full name. */
    std::vector<Rows<Index>> sameNames() const;

private:
    template <class Row>
    static Rows<Row> rowsOf(const std::vector<Row>& table, RowRange range) {
        return {table.data() + range.first, range.count};
    }
    void addStatus(ArchiveDocument& document, const DocumentStatus& status);
    void addTarget(Index document, const Target& target);
    void addReferences(ArchiveDocument& document, const DocumentLinks& links);
    void addLinks(Index document, const DocumentLinks& links, const std::optional<RecordedLinks>& recorded);
    void addGhosts(Index document, const DocumentLinks& links);
    void addRecorded(ArchiveDocument& document, const RecordedLinks& recorded, const std::vector<Target>& targets);
    void findTargets(const Naming& naming);
    void findMissing();
    void indexNames(const std::vector<std::string>& otherFiles, const Naming& naming);
    void turnRound();
    Index addNamed(const std::string& fullName, const Naming& naming);

    TextPool m_texts;
    std::vector<ArchiveDocument> m_documents;
    std::vector<ArchiveLink> m_links;
    std::vector<Index> m_found; ///< text a link: full name of the file; only until the archive is finished
    std::vector<LinkElement> m_elements;
    std::vector<LinkElement> m_references;
    std::vector<Ghost> m_ghosts;
    std::vector<ArchiveRecorded> m_recorded;
    std::vector<ArchiveDifference> m_differences;
    std::unordered_map<Index, Index> m_byName; ///< documents by the text of their full names, as names are compared
    std::vector<RowRange> m_usersOf;           ///< a row a document
    std::vector<Index> m_users, m_missingLinks;
    std::vector<MissingTarget> m_missing;
    NameIndex m_names; ///< of the files that were walked
};

#endif
