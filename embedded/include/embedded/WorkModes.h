#ifndef EMBEDDED_WORK_MODES_H
#define EMBEDDED_WORK_MODES_H

#include "ExportedByCatia.h"
#include "embedded/Session.h"

#include <cstddef>

namespace embedded {

/** How far a product is loaded. Products are fully loaded at first. */
enum class WorkMode { visualisation, standard, brep, design };

/** What comes of it when somebody sets a work mode. */
enum class SwitchOutcome {
    switched, ///< as it should be
    ignored,  ///< the platform reports success and leaves the product as it is
    refused,  ///< E_FAIL
    error,    ///< a CATError is thrown
    foreign   ///< something else is thrown
};

/** Puts one place of the structure into a mode. In visualisation it shows no reference, and its representation is the
 * ".cgr" file of the cache; see Document::loaded() for what becomes of the document. */
ExportedByCatia void setWorkMode(const Product& product, WorkMode mode);
ExportedByCatia WorkMode workMode(const Product& product);
/** Makes the product answer a number that is no mode. */
ExportedByCatia void setUnknownWorkMode(const Product& product, int number);
/** How often modes were set since the session began, whatever came of it. */
ExportedByCatia std::size_t workModeSwitches();
/** What comes of every switch from now on. */
ExportedByCatia void setSwitchOutcome(SwitchOutcome outcome);

/** The hosted workspace client: installed and closed at first. */
struct HostedClient {
    bool installed = true;
    bool open = false;
    int broughtToFront = 0; ///< how often its window was
};
ExportedByCatia HostedClient& hostedClient();

} // namespace embedded

#endif
