#ifndef EMBEDDED_FAILURES_H
#define EMBEDDED_FAILURES_H

#include "CATErrorDef.h"
#include "ExportedByCatia.h"

#include <string>
#include <vector>

namespace embedded {

/** How a chosen call fails. A call without a result code just answers nothing (null, empty, 0). */
enum class FaultFlavour {
    none,           ///< it does not
    code,           ///< failing code, outputs cleared
    codeWithOutput, ///< failing code, the output left non-null or filled: it carries no reference and must not be used
    nullOutput,     ///< success, but the output is null or empty
    shortRead,      ///< a file call gives less than there is; every other call fails as `code`
    falseAnswer,    ///< S_FALSE, outputs cleared; a call without a result code fails as `code`
    otherKind,      ///< success, with an object of another kind or, in a list, with a null and one before the others; a
                    ///< call that hands out neither is left alone
    thrown          ///< a CATError is thrown; a call of a companion library, which throws nothing, is left alone
};

/** Whether a call is the platform's own and no companion library's. */
ExportedByCatia bool isOfPlatform(const char* site);

/**
 * Failure points: every method of the platform and of the companion libraries that can fail asks here before it acts.
 * Armed with n, the n-th question is answered with the flavour, once or from then on.
 */
class ExportedByCatia Failures {
public:
    static Failures& get();

    void arm(int nth, bool persistent, FaultFlavour flavour);
    void disarm() { m_armed = m_isOtherKind = false; }
    /** Whether the chosen call was reached since arm(). */
    bool fired() const { return m_fired; }
    /** Name of the call that failed first since arm(). */
    const std::string& firedAt() const { return m_firedAt; }
    /** Questions asked since arm(). */
    int calls() const { return static_cast<int>(m_sites.size()); }
    /** Names of the calls since arm(), in their order. */
    const std::vector<const char*>& sites() const { return m_sites; }
    /** Whether a call answered S_FALSE, as the flavour demands, since arm(). */
    bool answeredFalse() const { return m_answeredFalse; }
    /** Whether the call that asked last is to hand out an object of another kind. */
    bool givesOtherKind() {
        m_gaveOtherKind = m_gaveOtherKind || m_isOtherKind;
        return m_isOtherKind;
    }
    /** Whether a call did so since arm(). */
    bool gaveOtherKind() const { return m_gaveOtherKind; }
    /** What a call with a result code answers when it fails in a flavour. */
    HRESULT codeOf(FaultFlavour flavour);

    /** What the call named `site` is to do. Free of cost while nothing is armed. */
    FaultFlavour ask(const char* site) { return m_armed ? answer(site) : FaultFlavour::none; }

private:
    FaultFlavour answer(const char* site);

    bool m_armed = false;
    bool m_persistent = false;
    bool m_fired = false;
    bool m_answeredFalse = false;
    bool m_isOtherKind = false;
    bool m_gaveOtherKind = false;
    int m_nth = 0;
    FaultFlavour m_flavour = FaultFlavour::none;
    std::string m_firedAt;
    std::vector<const char*> m_sites;
};

/** For calls that only answer or not: true when the call is to fail, in whatever flavour. */
inline bool fails(const char* site) { return Failures::get().ask(site) != FaultFlavour::none; }

} // namespace embedded

#endif
