#include "VornToolsLink.h"

const CATUnicodeString VornToolsLink::_CteCLASS_NAME("VornToolsLink::");

VornToolsLink::VornToolsLink() : m_link_tag_found(0) {}

VornToolsLink::VornToolsLink(const VornToolsLink& other) = default;

VornToolsLink::~VornToolsLink() = default;

VornToolsLink& VornToolsLink::operator=(const VornToolsLink& other) = default;

unsigned char VornToolsLink::operator==(const VornToolsLink& other) const {
    return m_linkedFileName == other.m_linkedFileName && m_type == other.m_type && m_reference == other.m_reference &&
                   m_link_tag_found == other.m_link_tag_found
               ? 1
               : 0;
}

CATUnicodeString VornToolsLink::get_type() const { return m_type; }

CATUnicodeString VornToolsLink::get_linkedFileName() const { return m_linkedFileName; }

CATUnicodeString VornToolsLink::get_reference() const { return m_reference; }

unsigned char VornToolsLink::get_link_tag_found() const { return m_link_tag_found; }

int VornToolsLink::set_type(CATUnicodeString type) {
    m_type = type;
    return 0;
}

int VornToolsLink::set_linkedFileName(CATUnicodeString linkedFileName) {
    m_linkedFileName = linkedFileName;
    return 0;
}

int VornToolsLink::set_reference(CATUnicodeString reference) {
    m_reference = reference;
    return 0;
}

int VornToolsLink::set_link_tag_found(unsigned char link_tag_found) {
    m_link_tag_found = link_tag_found;
    return 0;
}
