#include "VornToolsIgnoreNodes.h"

#include "foundation/Environment.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/Texts.h"
#include "links/Ancestors.h"
#include "session/DescriptionText.h"
#include "session/ProductHelpers.h"

#include "CATIPrdProperties.h"
#include "TYPVectorCATUnicodeString.h"
#include "UTILFile.h"
#include "VornEnvConfig.h"

using namespace vorntools;

const CATUnicodeString VornToolsIgnoreNodes::_CteCLASS_NAME("VornToolsIgnoreNodes::");

namespace {

constexpr const char* kPrefixFile = "IgnoreNodesIdentifiers.txt";

/** Journal texts for the name that told an ignore node. */
struct NameTexts {
    const char* by_part_number;
    const char* by_file_name; ///< a component is tested without one
    const char* by_instance_name;
};
constexpr NameTexts kElementTexts = {"the element is an ignore node (by PartNumber)",
                                     "the element is an ignore node (by File Name)",
                                     "the element is an ignore node (by Instance Name)"};
constexpr NameTexts kComponentTexts = {"the Component is an Ignore Node (by PartNumber)", nullptr,
                                       "the Component is an Ignore Node (by Instance Name)"};
constexpr const char* kComponentByDescription = "the Component is an Ignore Node (by Instance Description)";

/** Full name of the prefix file, whether it exists or not; empty when nobody knows its place. */
CATUnicodeString prefixFileName() {
    VornEnvConfig* const p_config = VornEnvConfig::getInstance();
    return p_config ? p_config->getEnvFullFilename(kPrefixFile) : CATUnicodeString();
}

/** Reads the lines that are not empty. A file that breaks off gives a failure. */
HRESULT readPrefixes(const CATUnicodeString& i_file_name, TYPVectorCATUnicodeString& o_prefixes) {
    UTILFile file;
    HRESULT code = file.open(i_file_name, "r");
    if (FAILED(code)) return code;
    CATUnicodeString line;
    for (code = file.readLine(line); code == S_OK; code = file.readLine(line))
        if (!line.IsNull()) o_prefixes.push_back(line);
    return code;
}

unsigned char say(const JournalFrame& i_frame, const char* i_text) {
    i_frame.write(i_text);
    return 1;
}

CATUnicodeString readDescription(const JournalFrame& i_frame, CATIProduct* ipi_product) {
    CATUnicodeString description;
    if (FAILED(VornToolsCommon::getInstanceDescription(ipi_product, description)))
        i_frame.writeInDebug("VornToolsCommon::getInstanceDescription is failed.");
    return description;
}

CATUnicodeString readInstanceName(const JournalFrame& i_frame, CATIProduct* ipi_product) {
    CATUnicodeString name;
    if (FAILED(VornToolsCommon::getPrdInstanceNameWithoutNewLines(ipi_product, name)))
        i_frame.writeInDebug("getPrdInstanceNameWithoutNewLines is failed.");
    return name;
}

CATUnicodeString readPartNumber(const JournalFrame& i_frame, const CATIProduct* ipi_product) {
    CATUnicodeString part_number = ipi_product->GetPartNumber();
    if (part_number.IsNull()) i_frame.write("product_part_number is empty.");
    return part_number;
}

/** Whether a text begins with one of the prefixes that a service has loaded. */
struct PrefixTest {
    VornToolsIgnoreNodes& nodes;
    HRESULT (VornToolsIgnoreNodes::*ask)(CATUnicodeString, unsigned char&);

    bool operator()(const CATUnicodeString& i_text) const {
        unsigned char answer = 0;
        (nodes.*ask)(i_text, answer);
        return answer != 0;
    }
};

/** Tests the names of a node, the first match decides. */
unsigned char testNames(const JournalFrame& i_frame, CATIProduct* ipi_product, const CATUnicodeString& i_file_name,
                        const NameTexts& i_texts, const PrefixTest& i_starts_with_prefix) {
    const CATUnicodeString part_number = readPartNumber(i_frame, ipi_product);
    const CATUnicodeString instance_name = readInstanceName(i_frame, ipi_product);
    if (i_starts_with_prefix(part_number)) return say(i_frame, i_texts.by_part_number);
    if (i_starts_with_prefix(i_file_name)) return say(i_frame, i_texts.by_file_name);
    if (i_starts_with_prefix(instance_name)) return say(i_frame, i_texts.by_instance_name);
    return 0;
}

/** @param i_format turns a description into that of an ignore node */
template <class Format>
void markAsIgnoreNode(const JournalFrame& i_frame, CATIPrdProperties& io_properties, Format&& i_format) {
    CATUnicodeString description;
    if (FAILED(io_properties.GetDescriptionInst(description))) {
        i_frame.platformFailed("GetDescriptionInst");
        return;
    }
    i_format(description);
    if (FAILED(writeDescription(&io_properties, description))) i_frame.platformFailed("SetDescriptionInst");
}

} // namespace

VornToolsIgnoreNodes::VornToolsIgnoreNodes()
    : m_prefixesManaged(0), m_instanceDescriptionManaged(0), m_prefixes(nullptr) {
    initClassVariables();
}

VornToolsIgnoreNodes::~VornToolsIgnoreNodes() { delete m_prefixes; }

HRESULT VornToolsIgnoreNodes::initClassVariables() {
    const JournalFrame frame(_CteCLASS_NAME, "initClassVariables");
    m_instanceDescriptionManaged = 0;
    const HRESULT code = loadPrefixIgnoreNodes();
    m_instanceDescriptionManaged = environmentSays(&ENVManager::isInstDescManagedForIgnoreNode) ? 1 : 0;
    return code;
}

HRESULT VornToolsIgnoreNodes::loadPrefixIgnoreNodes() {
    const JournalFrame frame(_CteCLASS_NAME, "loadPrefixIgnoreNodes");
    m_prefixesManaged = 0;
    delete m_prefixes;
    m_prefixes = nullptr;
    const auto load = [&]() -> HRESULT {
        m_prefixes = new TYPVectorCATUnicodeString;
        const CATUnicodeString file_name = prefixFileName();
        if (file_name.IsNull() || !UTILFile::existingFile(file_name)) {
            frame.write("the ignore nodes prefix file %s does not exist", file_name);
            return E_FAIL;
        }
        if (FAILED(guarded([&] { return readPrefixes(file_name, *m_prefixes); }, E_FAIL))) {
            frame.badInput("p_prefix_file");
            frame.write("unable to read the ignore nodes prefix file %s", file_name);
            return E_FAIL;
        }
        m_prefixesManaged = m_prefixes->size() > 0 ? 1 : 0;
        if (!m_prefixesManaged) frame.write("the ignore nodes prefix file %s is empty", file_name);
        frame.write("the ignore nodes prefix file was loaded");
        return m_prefixesManaged ? S_OK : E_FAIL;
    };
    return guarded(load, E_FAIL);
}

HRESULT VornToolsIgnoreNodes::isStartedByPrefix(CATUnicodeString text, unsigned char& result) {
    const JournalFrame frame(_CteCLASS_NAME, "isStartedByPrefix");
    result = 0;
    for (int i = 0; i < m_prefixes->size() && !result; ++i) result = beginsWith(text, m_prefixes->at(i)) ? 1 : 0;
    return S_OK;
}

HRESULT VornToolsIgnoreNodes::isActiveDocumentAnIgnoreNode(CATIProduct* product, CATUnicodeString fileName,
                                                           unsigned char& result) {
    const JournalFrame frame(_CteCLASS_NAME, "isActiveDocumentAnIgnoreNode");
    result = 0;
    const CATUnicodeString part_number = product->GetPartNumber();
    if (part_number.IsNull()) frame.platformFailed("GetPartNumber");
    const PrefixTest starts_with_prefix{*this, &VornToolsIgnoreNodes::isStartedByPrefix};
    if (starts_with_prefix(part_number))
        result = say(frame, "the ActiveDocument is an Ignore Node (by PartNumber)");
    else if (starts_with_prefix(fileName))
        result = say(frame, "the ActiveDocument is an Ignore Node (by File Name)");
    return S_OK;
}

HRESULT VornToolsIgnoreNodes::isBrokenIconAnIgnoreNode(CATIProduct* product, const CATUnicodeString& description,
                                                       unsigned char& result) {
    const JournalFrame frame(_CteCLASS_NAME, "isBrokenIconAnIgnoreNode");
    result = 0;
    // Kept because a broken icon has no other mark: its description counts whatever the environment says.
    if (beginsWith(description, kIgnoreNode)) {
        result = say(frame, "the BrokenIcon is an Ignore Node (by Instance Description)");
        return S_OK;
    }
    if (!m_prefixesManaged) return S_OK;
    CATUnicodeString instance_name;
    if (FAILED(VornToolsCommon::getPrdInstanceNameWithoutNewLines(product, instance_name)))
        return frame.platformFailed("VornToolsCommon::getPrdInstanceNameWithoutNewLines");
    const PrefixTest starts_with_prefix{*this, &VornToolsIgnoreNodes::isStartedByPrefix};
    if (starts_with_prefix(instance_name)) result = say(frame, "the BrokenIcon is an Ignore Node (by Instance Name)");
    return S_OK;
}

HRESULT VornToolsIgnoreNodes::isComponentAnIgnoreNode(CATIProduct* product, const CATUnicodeString& description,
                                                      unsigned char& result) {
    const JournalFrame frame(_CteCLASS_NAME, "isComponentAnIgnoreNode");
    result = 0;
    if (m_instanceDescriptionManaged && beginsWith(description, kIgnoreNode))
        result = say(frame, kComponentByDescription);
    else if (m_prefixesManaged)
        result = testNames(frame, product, "", kComponentTexts, {*this, &VornToolsIgnoreNodes::isStartedByPrefix});
    return S_OK;
}

HRESULT VornToolsIgnoreNodes::isAnIgnoreNode(CATIProduct* product, CATUnicodeString fileName, int mode,
                                             unsigned char& result) {
    const JournalFrame frame(_CteCLASS_NAME, "isAnIgnoreNode");
    result = 0;
    if (!m_prefixesManaged && !m_instanceDescriptionManaged) {
        frame.write("Ignore Nodes are not managed");
        return S_OK;
    }
    if (!product) {
        frame.write("ip_product is NULL. Exit.");
        return frame.badInput("ip_product");
    }
    const auto test = [&]() -> HRESULT {
        if (mode == NodeKindActiveDocument && m_prefixesManaged)
            return isActiveDocumentAnIgnoreNode(product, fileName, result);
        const CATUnicodeString description = readDescription(frame, product);
        if (mode == NodeKindBrokenIcon) return isBrokenIconAnIgnoreNode(product, description, result);
        if (mode == NodeKindComponent) return isComponentAnIgnoreNode(product, description, result);
        if (m_instanceDescriptionManaged && beginsWith(description, kIgnoreNode))
            result = say(frame, kComponentByDescription);
        else if (m_prefixesManaged)
            result =
                testNames(frame, product, fileName, kElementTexts, {*this, &VornToolsIgnoreNodes::isStartedByPrefix});
        return S_OK;
    };
    const HRESULT code = guarded(test, E_FAIL);
    if (!result) frame.write("the element is NOT an ignore node");
    return code;
}

HRESULT VornToolsIgnoreNodes::hasAnIgnoreNode(CATIProduct* product, unsigned char& result) {
    const JournalFrame frame(_CteCLASS_NAME, "hasAnIgnoreNode");
    result = 0;
    if (!product) return frame.badInput("ip_product");
    const auto work = [&]() -> HRESULT {
        const auto is_ignore_node = [&](CATIProduct* ip_ancestor, const CATUnicodeString& i_file_name,
                                        unsigned char& o_answer) {
            return isAnIgnoreNode(ip_ancestor, i_file_name, NodeKindElement, o_answer);
        };
        const HRESULT code = findAncestor(frame, product, is_ignore_node, result);
        if (SUCCEEDED(code) && !result) frame.write("the element is NOT a child of an ignore node");
        return code;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsIgnoreNodes::setFormatInstanceDescription(CATUnicodeString& description) {
    const JournalFrame frame(_CteCLASS_NAME, "setFormatInstanceDescription");
    markAsIgnored(description);
    return S_OK;
}

HRESULT VornToolsIgnoreNodes::updateInstanceDescription(CATIProduct* product) {
    const JournalFrame frame(_CteCLASS_NAME, "updateInstanceDescription");
    if (!product) return frame.badInput("ip_catiproduct");
    const auto mark = [&] {
        InterfacePtr<CATIProduct> sp_instance;
        sp_instance.receive([&](CATIProduct*& o_instance) {
            return VornToolsCommon::getInstanceInFirstProductParent(product, o_instance);
        });
        if (!sp_instance) {
            frame.platformFailed("getInstanceInFirstProductParent");
            return;
        }
        const auto sp_properties = sp_instance.query<CATIPrdProperties>();
        if (!sp_properties) {
            frame.missing("p_product_child_properties");
            return;
        }
        markAsIgnoreNode(frame, *sp_properties.get(), [this](auto& text) { setFormatInstanceDescription(text); });
    };
    return guarded(mark) ? S_OK : E_FAIL;
}
