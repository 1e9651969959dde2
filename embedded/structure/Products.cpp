#include "embedded/structure/Products.h"

#include "embedded/documents/SessionData.h"
#include "embedded/files/FileNames.h"

#include <algorithm>
#include <cstring>
#include <memory>

EMBEDDED_INTERFACE(CATIAProduct, CATIABase, 0x200);
EMBEDDED_INTERFACE(CATIPrdProperties, CATBaseUnknown, 0x201);
EMBEDDED_INTERFACE(CATIProduct, CATBaseUnknown, 0x202);

namespace embedded {

namespace {

CATIProduct_var handleOf(ProductObject* product) { return CATIProduct_var(static_cast<CATIProduct*>(product)); }

/** Ends a call that gives a text which the object may lack. */
HRESULT optionalText(FaultFlavour flavour, const std::string& value, CATBSTR& output) {
    output = nullptr;
    if (flavour == FaultFlavour::none && value.empty()) return E_FAIL;
    return automationTextAnswer(flavour, value, output);
}

/** One direction of a search through the references. */
class Frontier {
public:
    Frontier(Reference& start, std::uint64_t mark) : m_mark(mark) { reach(start); }

    bool exhausted() const { return m_next == m_reached.size(); }
    /** Visits one more reference and reaches those below it, or above it when `upwards`. */
    Reference& step(bool upwards) {
        Reference& visited = *m_reached[m_next++];
        if (upwards) {
            for (Reference* user : visited.usedIn) reach(*user);
        } else {
            for (std::size_t i = 0; i < visited.node->childCount(); ++i)
                if (Reference* const child = visited.node->child(i)->reference()) reach(*child);
        }
        return visited;
    }

private:
    void reach(Reference& reference) {
        if (reference.mark == m_mark) return;
        reference.mark = m_mark;
        m_reached.push_back(&reference);
    }

    const std::uint64_t m_mark;
    std::size_t m_next = 0;
    std::vector<Reference*> m_reached;
};

/**
 * Whether `below` holds `above` somewhere in its structure, itself included. Looks down from the one and up from the
 * other by turns and stops with whichever ends first, so that building an assembly costs little in any order.
 */
bool holds(SessionData& session, Reference& below, Reference& above) {
    if (&below == &above) return true;
    const std::uint64_t downMark = ++session.lastMark;
    const std::uint64_t upMark = ++session.lastMark;
    Frontier down(below, downMark);
    Frontier up(above, upMark);
    while (!down.exhausted() && !up.exhausted()) {
        if (&down.step(false) == &above || &up.step(true) == &below) return true;
    }
    return false;
}

} // namespace

RepresentationObject::RepresentationObject(const ProductObject& product)
    : Implements("ShapeRepresentation"), m_product(product) {}

std::string RepresentationObject::objectName() const { return "representation of " + m_product.objectName(); }

HRESULT __stdcall RepresentationObject::get_Name(CATBSTR& oName) {
    constexpr const char* kCached = ".cgr";
    const Reference* const reference = m_product.reference();
    std::string name(reference ? fileNameOf(reference->masterShape) : std::string_view());
    if (m_product.isVisualised() && suffixOf(name) != "cgr") name += kCached;
    return automationTextAnswer(called("CATIABase::get_Name"), name, oName);
}

ProductObject::ProductObject(SessionData& session, Reference& reference)
    : Implements("ProductReference"), m_session(session), m_father(nullptr), m_instance(nullptr),
      m_reference(&reference), m_index(0) {}

ProductObject::ProductObject(ProductObject& father, std::size_t index, ProductObject* instance, Reference* reference)
    : Implements("ProductInstance"), m_session(father.m_session), m_father(&father),
      m_instance(instance ? instance : this), m_reference(reference), m_index(index) {}

std::string ProductObject::objectName() const {
    std::vector<const ProductObject*> path;
    for (const ProductObject* place = this; place; place = place->m_father) path.push_back(place);
    std::string name = "product " + path.back()->partNumber();
    for (auto place = path.rbegin() + 1; place != path.rend(); ++place) name += "/" + (*place)->instanceName();
    return name;
}

std::size_t ProductObject::childCount() const { return m_reference ? m_reference->node->m_children.size() : 0; }

ProductObject* ProductObject::child(std::size_t index) const {
    if (index >= childCount()) return nullptr;
    if (m_children.size() < childCount()) m_children.resize(childCount());
    ProductObject*& place = m_children[index];
    if (!place) {
        ProductObject* const instance = m_reference->node->m_children[index];
        place = m_session.newProduct(
            std::make_unique<ProductObject>(const_cast<ProductObject&>(*this), index, instance, instance->m_reference));
    }
    return place;
}

ProductObject* ProductObject::childNamed(const std::string& instanceName) const {
    if (!m_reference) return nullptr;
    const auto found = m_reference->instanceIndex.find(instanceName);
    return found == m_reference->instanceIndex.end() ? nullptr : child(found->second);
}

ProductObject* ProductObject::addInstance(Reference* child, const std::string& instanceName) {
    if (!isReference() || m_reference->instanceIndex.count(instanceName) != 0) return nullptr;
    if (child && holds(m_session, *child, *m_reference)) return nullptr;
    ProductObject* const instance =
        m_session.newProduct(std::make_unique<ProductObject>(*this, m_children.size(), nullptr, child));
    instance->m_name = instanceName;
    m_reference->instanceIndex.emplace(instanceName, m_children.size());
    m_children.push_back(instance);
    if (child) child->usedIn.push_back(m_reference);
    return instance;
}

const std::string& ProductObject::instanceName() const { return m_instance ? m_instance->m_name : m_name; }

bool ProductObject::rename(const std::string& instanceName) {
    if (!m_instance) return false;
    auto& brothers = m_instance->m_father->m_reference->instanceIndex;
    if (!brothers.emplace(instanceName, m_index).second) return instanceName == m_instance->m_name;
    brothers.erase(m_instance->m_name);
    m_instance->m_name = instanceName;
    return true;
}

void ProductObject::setWorkMode(int mode) {
    m_workMode = mode;
    if (!m_reference || isReference()) return;
    if (isVisualised())
        m_reference->pictures.insert(this);
    else
        m_reference->pictures.erase(this);
}

std::string ProductObject::description() const {
    if (m_description) return *m_description;
    return m_instance && m_instance != this ? m_instance->description() : std::string();
}

bool ProductObject::answers(const IID& iid) const {
    if (iid == IID_CATIPrdProperties) return m_hasProperties;
    if (iid == IID_CATILinkableObject) return isReference() && m_reference->linkable;
    if (iid == IID_CATISpecObject) return m_reference != nullptr;
    return true;
}

HRESULT __stdcall ProductObject::get_Name(CATBSTR& oName) {
    return automationTextAnswer(called("CATIAProduct::get_Name"), isReference() ? partNumber() : instanceName(), oName);
}

CATIProduct_var ProductObject::GetReferenceProduct() {
    if (failing("CATIProduct::GetReferenceProduct") || !m_reference) return CATIProduct_var();
    // In visualisation only the picture is loaded.
    if (isVisualised() && !isReference()) return CATIProduct_var();
    return handleOf(m_reference->node);
}

CATIProduct_var ProductObject::GetFatherProduct() {
    return failing("CATIProduct::GetFatherProduct") ? CATIProduct_var() : handleOf(m_father);
}

HRESULT ProductObject::IsReference() { return failing("CATIProduct::IsReference") || !isReference() ? E_FAIL : S_OK; }

CATIProduct_var ProductObject::FindInstance(const CATIProduct_var& iContext) {
    if (failing("CATIProduct::FindInstance")) return CATIProduct_var();
    const auto* const context = dynamic_cast<const ProductObject*>(static_cast<CATIProduct*>(iContext));
    return context ? handleOf(findInstance(*context)) : CATIProduct_var();
}

/**
 * From this place upwards, the first place that shows the context's reference stands for the context: the way from
 * there down to this place, taken below the context, leads to the answer. A product does not occur in itself.
 */
ProductObject* ProductObject::findInstance(const ProductObject& context) const {
    if (!context.m_reference) return nullptr;
    std::vector<std::size_t> way;
    const ProductObject* place = this;
    do {
        if (!place->m_father) return nullptr;
        way.push_back(place->m_index);
        place = place->m_father;
    } while (place->m_reference != context.m_reference);
    ProductObject* found = const_cast<ProductObject*>(&context);
    for (auto index = way.rbegin(); index != way.rend(); ++index) found = found->child(*index);
    return found;
}

CATUnicodeString ProductObject::GetPartNumber() const {
    return failing("CATIProduct::GetPartNumber") ? CATUnicodeString() : toText(partNumber());
}

HRESULT ProductObject::GetPrdInstanceName(CATUnicodeString& oName) {
    return textAnswer(called("CATIProduct::GetPrdInstanceName"), instanceName(), oName);
}

HRESULT ProductObject::SetPrdInstanceName(const CATUnicodeString iName) {
    return failing("CATIProduct::SetPrdInstanceName") || !rename(toBytes(iName)) ? E_FAIL : S_OK;
}

CATListValCATBaseUnknown_var* ProductObject::GetChildren(const char* iIntfId) const {
    static const std::pair<const char*, const IID*> interfaces[] = {{"CATIProduct", &IID_CATIProduct},
                                                                    {"CATIPrdProperties", &IID_CATIPrdProperties},
                                                                    {"CATIAProduct", &IID_CATIAProduct},
                                                                    {"CATISpecObject", &IID_CATISpecObject}};
    if (failing("CATIProduct::GetChildren")) return nullptr;
    const auto* const wanted = std::find_if(std::begin(interfaces), std::end(interfaces), [iIntfId](const auto& entry) {
        return std::strcmp(entry.first, iIntfId ? iIntfId : "CATIProduct") == 0;
    });
    auto list = std::make_unique<CATListValCATBaseUnknown_var>();
    if (wanted == std::end(interfaces)) return list.release();
    for (std::size_t i = 0; i < childCount(); ++i) {
        ProductObject* const place = child(i);
        if (place->answers(*wanted->second)) list->Append(CATBaseUnknown_var(place->unknown()));
    }
    return list.release();
}

int ProductObject::GetChildrenCount() const {
    return failing("CATIProduct::GetChildrenCount") ? 0 : static_cast<int>(childCount());
}

HRESULT ProductObject::GetDescriptionInst(CATUnicodeString& oDescription) {
    return textAnswer(called("CATIPrdProperties::GetDescriptionInst"), description(), oDescription);
}

HRESULT ProductObject::SetDescriptionInst(const CATUnicodeString& iDescription) {
    if (failing("CATIPrdProperties::SetDescriptionInst") || isReference()) return E_FAIL;
    setDescription(toBytes(iDescription));
    return S_OK;
}

HRESULT ProductObject::SetDescriptionRef(const CATUnicodeString& iDescription) {
    if (failing("CATIPrdProperties::SetDescriptionRef") || !m_reference) return E_FAIL;
    m_reference->description = toBytes(iDescription);
    return S_OK;
}

CATDocument* ProductObject::GetDocument() {
    return failing("CATILinkableObject::GetDocument") || !m_reference ? nullptr : m_reference->document;
}

CATBoolean ProductObject::IsUpToDate(CATIDomain_var) const {
    return !failing("CATISpecObject::IsUpToDate") && m_reference && m_reference->document->upToDate ? TRUE : FALSE;
}

HRESULT __stdcall ProductObject::HasAMasterShapeRepresentation(CAT_VARIANT_BOOL& oHas) {
    const FaultFlavour flavour = called("CATIAProduct::HasAMasterShapeRepresentation");
    if (flavour != FaultFlavour::none) return failedAnswer<CAT_VARIANT_BOOL>(flavour, oHas, 0, -1);
    oHas = m_reference && !m_reference->masterShape.empty() ? -1 : 0;
    return S_OK;
}

HRESULT __stdcall ProductObject::GetMasterShapeRepresentation(CAT_VARIANT_BOOL iLoadIfNecessary,
                                                              CATBaseDispatch*& oRep) {
    oRep = nullptr;
    const FaultFlavour flavour = called("CATIAProduct::GetMasterShapeRepresentation");
    if (!m_representation) m_representation = std::make_unique<RepresentationObject>(*this);
    if (flavour == FaultFlavour::codeWithOutput) oRep = m_representation.get();
    if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
    if (!m_reference || m_reference->masterShape.empty()) return E_FAIL;
    if (iLoadIfNecessary && isVisualised()) setWorkMode(1);
    oRep = m_representation.get();
    oRep->AddRef();
    return S_OK;
}

HRESULT __stdcall ProductObject::GetMasterShapeRepresentationPathName(CATBSTR& oPath) {
    const FaultFlavour flavour = called("CATIAProduct::GetMasterShapeRepresentationPathName");
    return optionalText(flavour, m_reference ? m_reference->masterShape : std::string(), oPath);
}

HRESULT __stdcall ProductObject::GetDefaultShapeName(CATBSTR& oName) {
    const FaultFlavour flavour = called("CATIAProduct::GetDefaultShapeName");
    const bool any = m_reference && !m_reference->shapes.empty();
    return optionalText(flavour, any ? m_reference->shapes.front().first : std::string(), oName);
}

HRESULT __stdcall ProductObject::GetShapePathName(const CATBSTR& iShapeName, CATBSTR& oPath) {
    const FaultFlavour flavour = called("CATIAProduct::GetShapePathName");
    const std::string name = fromAutomationText(iShapeName);
    std::string path;
    if (m_reference)
        for (const auto& shape : m_reference->shapes)
            if (shape.first == name && path.empty()) path = shape.second;
    return optionalText(flavour, path, oPath);
}

} // namespace embedded
