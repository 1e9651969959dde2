#ifndef SESSION_PRODUCT_HELPERS_H
#define SESSION_PRODUCT_HELPERS_H

#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"

#include "CATILinkableObject.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"

namespace vorntools {

/** The product one level up; empty at the root. */
inline InterfacePtr<CATIProduct> fatherOf(CATIProduct* ipi_product) {
    return InterfacePtr<CATIProduct>::share(ipi_product->GetFatherProduct());
}

/** The reference that a product shows; empty while none is loaded. */
inline InterfacePtr<CATIProduct> referenceOf(CATIProduct* ipi_product) {
    return InterfacePtr<CATIProduct>::share(ipi_product->GetReferenceProduct());
}

/** The occurrence of a product below another; empty when there is none. */
inline InterfacePtr<CATIProduct> occurrenceIn(CATIProduct* ipi_product, CATIProduct* ipi_context) {
    return InterfacePtr<CATIProduct>::share(ipi_product->FindInstance(CATIProduct_var(ipi_context)));
}

/** The document that an object lies in; null when it lies in none or leads to none. No reference is added. */
inline CATDocument* documentBehind(const InterfacePtr<CATILinkableObject>& i_linkable) {
    return i_linkable ? i_linkable->GetDocument() : nullptr;
}

/** The document that a reference lies in; null when it leads to none. No reference is added. */
inline CATDocument* documentOf(const InterfacePtr<CATIProduct>& i_reference) {
    return documentBehind(i_reference.query<CATILinkableObject>());
}

/** Writes an instance description: the one place that calls the setter, which the platform does not publish. */
inline HRESULT writeDescription(CATIPrdProperties* ipi_properties, const CATUnicodeString& i_description) {
    return ipi_properties->SetDescriptionInst(i_description);
}

} // namespace vorntools

#endif
