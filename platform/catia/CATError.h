#ifndef CATError_H
#define CATError_H

#include "CATBaseUnknown.h"

/** An error that the platform throws, as a pointer with a reference for the one who catches it. */
class ExportedByCatia CATError : public CATBaseUnknown {
public:
    const char* GetMsgId() const { return m_msgId; }
    const char* GetMsgCatalog() const { return m_msgCatalog; }

protected:
    /** Both texts stay with the caller. */
    CATError(const char* iMsgId, const char* iMsgCatalog) : m_msgId(iMsgId), m_msgCatalog(iMsgCatalog) {}
    ~CATError() override = default;

private:
    const char* m_msgId;
    const char* m_msgCatalog;
};

/** A fault within the platform. */
class ExportedByCatia CATInternalError : public CATError {
public:
    explicit CATInternalError(const char* iMsgId = nullptr, const char* iMsgCatalog = nullptr)
        : CATError(iMsgId, iMsgCatalog) {}
};

#endif
