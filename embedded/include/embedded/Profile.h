#ifndef EMBEDDED_PROFILE_H
#define EMBEDDED_PROFILE_H

#include "ExportedByCatia.h"

#include <string>
#include <tuple>
#include <vector>

namespace embedded {

/** Order in which a folder lists its entries, "." and ".." among them. */
enum class FolderOrder {
    system,  ///< these two first, the others as the system gives them
    names,   ///< by name
    reversed ///< these two first, the others by name, the last one first
};

/** The 8-bit encoding of texts. */
enum class CodePage {
    utf8,       ///< every character, and every byte that is part of none
    windows1252 ///< '?' stands for what it lacks
};

/** The decimal mark with which a dimension is read from a text. */
enum class DecimalMark {
    either,
    session, ///< that of the session only
    point    ///< a point only
};

/** How the platform behaves where nobody has published it: one choice each. The first ones are the usual ones. */
struct Switches {
    /** The companion services that take a file name resolve one by logical directory; otherwise no file has it. */
    bool servicesKnowLogicalNames = false;
    FolderOrder folderOrder = FolderOrder::system;
    /** CATReadDirectory says with the last entry that it is the last; otherwise with the call after it. */
    bool entryWithEndOfFolder = false;
    /** The folders of CATFindPath are a list, separated as the system's search paths are; otherwise they are one. */
    bool pathLists = false;
    CodePage codePage = CodePage::utf8;
    /** A text is read as a number only when nothing stands behind it; otherwise what does is left. */
    bool numbersEndTexts = false;
    /** Decimals with which real numbers are shown; 0: as many as it takes. */
    int shownDecimals = 0;
    DecimalMark dimensionMark = DecimalMark::either;
    /** Selecting another sheet or configuration of a design table makes its file longer. */
    bool selectingWritesTables = false;
    /** Selecting a sheet makes the first configuration the current one, whichever was it before. */
    bool sheetSelectsFirstConfiguration = false;
    /** A design table can be left without a current configuration. */
    bool rowZeroIsTaken = false;
    /** In visualisation a product tells neither names nor paths of its shapes, that of the master shape included. */
    bool picturesAreSilent = false;
    /** A root product has no instance name to tell; otherwise an empty one. */
    bool rootsRefuseInstanceName = false;
    /** A product without children gives no list of them; otherwise an empty one. */
    bool childlessGiveNoList = false;
    /** Instance names and part numbers that users may not type are refused: empty ones, those with "!" or ":", those
     * that end with a blank. */
    bool oddNamesAreRefused = false;

    friend bool operator==(const Switches& a, const Switches& b) { return a.asTuple() == b.asTuple(); }
    friend bool operator!=(const Switches& a, const Switches& b) { return !(a == b); }

private:
    std::tuple<bool, FolderOrder, bool, bool, CodePage, bool, int, DecimalMark, bool, bool, bool, bool, bool, bool,
               bool>
    asTuple() const {
        return {servicesKnowLogicalNames,
                folderOrder,
                entryWithEndOfFolder,
                pathLists,
                codePage,
                numbersEndTexts,
                shownDecimals,
                dimensionMark,
                selectingWritesTables,
                sheetSelectsFirstConfiguration,
                rowZeroIsTaken,
                picturesAreSilent,
                rootsRefuseInstanceName,
                childlessGiveNoList,
                oddNamesAreRefused};
    }
};

/**
 * Names of the profiles, which are switches chosen together: "kind" takes the usual ones, "unkind" the worse of each,
 * "resolving" is as unkind but for services that know logical names and dimensions that are read with a point.
 */
ExportedByCatia std::vector<std::string> profiles();
/** The profile that sessions begin with: the one that was chosen last, at first that of the environment variable
 * VORNTOOLS_PROFILE, else "kind". A variable that names none ends the process with a message and status 2. */
ExportedByCatia const std::string& profile();
/** Sessions begin with this profile from now on, the current one changes to it. False, and nothing happens, for a name
 * of none. */
ExportedByCatia bool chooseProfile(const std::string& name);

/** The session's switches: those of the profile until they are set, and again after a reset. */
ExportedByCatia const Switches& switches();
ExportedByCatia void setSwitches(const Switches& switches);

} // namespace embedded

#endif
