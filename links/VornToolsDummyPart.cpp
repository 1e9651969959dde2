#include "VornToolsDummyPart.h"

#include "foundation/Environment.h"
#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATIProduct.h"
#include "UTILFile.h"
#include "VornToolsCommon.h"

#include <algorithm>
#include <iterator>
#include <new>

using namespace vorntools;

CATImplementClass(VornToolsDummyPart, Implementation, CATBaseUnknown, CATNull);

const CATUnicodeString VornToolsDummyPart::_CteCLASS_NAME("VornToolsDummyPart::");
VornToolsDummyPart* VornToolsDummyPart::_singleton = nullptr;

namespace {

constexpr unsigned char kNo = 0;
constexpr const char* kPartTypes[] = {"CATPart", "model", "CATShape", "jt"};

bool isOfPartType(const CATUnicodeString& i_full_name) {
    const CATUnicodeString extension = UTILFile::getExtension(i_full_name);
    return std::any_of(std::begin(kPartTypes), std::end(kPartTypes),
                       [&](const char* i_type) { return extension.Compare(i_type) != 0; });
}

bool datFileSaysDummyPart(const JournalFrame& i_frame, const CATUnicodeString& i_full_name) {
    CATListValCATUnicodeString lines;
    if (FAILED(VornToolsCommon::readDatTools(i_full_name, "", lines))) {
        i_frame.write("readDatTools returns failed for : %s", i_full_name);
        return false;
    }
    const int key = lines.Locate("<LoadType>");
    return key > 0 && key < lines.Size() && lines[key + 1] == CATUnicodeString("DummyPart");
}

/** For a file without content. While the integration makes the files itself there is no DAT file to ask. */
bool isMarkedAsDummyPart(const JournalFrame& i_frame, const CATUnicodeString& i_full_name) {
    if (processSays(&PROCManager::isCommandImport) || processSays(&PROCManager::isCommandCreateSpreadsheet))
        return isOfPartType(i_full_name);
    return datFileSaysDummyPart(i_frame, i_full_name);
}

/** Reads the file that shows a component. The caller answers "no" whether it is found or not; a component that should
 * have one and has none is reported. */
void checkShapeOfComponent(const JournalFrame& i_frame, CATIProduct* ipi_product) {
    unsigned char is_component = 0;
    unsigned char is_foreign = 0;
    if (FAILED(VornToolsCommon::isComponent(ipi_product, is_component)) || !is_component) return;
    if (FAILED(VornToolsCommon::isAForeignFile(ipi_product, is_foreign)) || !is_foreign) return;
    CATUnicodeString path;
    if (FAILED(VornToolsCommon::getMasterShapeRepresentationPathName(ipi_product, path)))
        i_frame.platformFailed("VornToolsCommon::getMasterShapeRepresentationPathName");
}

/** Completes a name without directory. False when the directory is unknown. */
bool completeName(const JournalFrame& i_frame, CATUnicodeString& io_name) {
    CATUnicodeString directory;
    CATUnicodeString file_name;
    if (FAILED(splitFullName(io_name, directory, file_name))) {
        i_frame.write("file name may not contains path : %s", io_name);
        return true;
    }
    if (!directory.IsNull()) return true;
    if (!ENVManager::getInstance()) {
        i_frame.write("can't get path for file : %s", io_name);
        i_frame.missing("ENVManager::getInstance(");
        return false;
    }
    io_name = environmentText(&ENVManager::getFilesDirectory) + file_name;
    return true;
}

} // namespace

CATBaseUnknown* VornToolsDummyPart::CreateItself() { return new (std::nothrow) VornToolsDummyPart; }

VornToolsDummyPart::VornToolsDummyPart() { initClassVariables(); }

VornToolsDummyPart::~VornToolsDummyPart() { releaseClassVariables(); }

HRESULT VornToolsDummyPart::initClassVariables() {
    const JournalFrame frame(_CteCLASS_NAME, "initClassVariables");
    m_dummyParts.RemoveAll();
    return S_OK;
}

HRESULT VornToolsDummyPart::releaseClassVariables() {
    const JournalFrame frame(_CteCLASS_NAME, "releaseClassVariables");
    m_dummyParts.RemoveAll();
    return S_OK;
}

VornToolsDummyPart* VornToolsDummyPart::getInstance() {
    const JournalFrame frame(_CteCLASS_NAME, "getInstance");
    if (!_singleton) _singleton = new (std::nothrow) VornToolsDummyPart;
    return _singleton;
}

HRESULT VornToolsDummyPart::kill() {
    const JournalFrame frame(_CteCLASS_NAME, "kill");
    if (!_singleton) return S_OK;
    _singleton->Release();
    _singleton = nullptr;
    return S_OK;
}

unsigned char VornToolsDummyPart::isAFileDummyPart(const CATUnicodeString& fullFileName) {
    const JournalFrame frame(_CteCLASS_NAME, "isAFileDummyPart");
    if (fullFileName.IsNull()) {
        frame.badInput("i_full_file_name");
        return 0;
    }
    const auto test = [&]() -> unsigned char {
        long long size = 0;
        if (FAILED(UTILFile::getFileSize(nameOnDisk(fullFileName), size))) {
            frame.write("getFileSize returns failed for : %s", fullFileName);
            return 0;
        }
        if (size != 0 || !isMarkedAsDummyPart(frame, fullFileName)) return 0;
        if (!m_dummyParts.Locate(fullFileName)) m_dummyParts.Append(fullFileName);
        return 1;
    };
    return guarded(test, kNo);
}

unsigned char VornToolsDummyPart::isADummyPart(const CATUnicodeString& fullFileName) {
    const JournalFrame frame(_CteCLASS_NAME, "isADummyPart");
    if (fullFileName.IsNull()) {
        frame.writeInDebug("i_full_file_name is empty");
        return 0;
    }
    if (!m_dummyParts.Locate(fullFileName)) return isAFileDummyPart(fullFileName);
    frame.write("Is a dummy part");
    return 1;
}

unsigned char VornToolsDummyPart::isADummyPart(CATIProduct* product, unsigned char useCache) {
    const JournalFrame frame(_CteCLASS_NAME, "isADummyPart");
    if (!product) {
        frame.badInput("ip_product");
        return 0;
    }
    const auto test = [&]() -> unsigned char {
        CATDocument* p_document = nullptr;
        CATUnicodeString full_name;
        if (FAILED(VornToolsCommon::getDocumentFileName(product, p_document, full_name))) {
            frame.write("getDocumentFileName is failed: goto EXIT_HERE.");
            return 0;
        }
        if (UTILFile::isACATProduct(UTILFile::getExtension(full_name))) {
            checkShapeOfComponent(frame, product);
            return 0;
        }
        if (full_name.IsNull()) return 0;
        if (!(useCache && m_dummyParts.Locate(full_name)) && !isAFileDummyPart(full_name)) return 0;
        frame.write("Is a dummy part");
        return 1;
    };
    return guarded(test, kNo);
}

HRESULT VornToolsDummyPart::listOfFilesContainsADummyPart(const CATListValCATUnicodeString& files,
                                                          unsigned char& result) {
    const JournalFrame frame(_CteCLASS_NAME, "listOfFilesContainsADummyPart");
    result = 0;
    const auto test_all = [&] {
        for (int i = 1; i <= files.Size() && !result; ++i) {
            CATUnicodeString name = files[i];
            if (completeName(frame, name)) result = isADummyPart(name);
        }
    };
    return guarded(test_all) ? S_OK : E_FAIL;
}

HRESULT VornToolsDummyPart::selectionContainsADummyPart(const CATListPtrCATBaseUnknown& objects,
                                                        unsigned char& result) {
    const JournalFrame frame(_CteCLASS_NAME, "selectionContainsADummyPart");
    result = 0;
    const auto work = [&]() -> HRESULT {
        for (int i = 1; i <= objects.Size() && !result; ++i) {
            const auto sp_product = queryInterface<CATIProduct>(objects[i]);
            if (sp_product)
                result = isADummyPart(sp_product.get(), 1);
            else
                frame.platformFailed("QueryInterface IID_CATIProduct");
        }
        return S_OK;
    };
    return guarded(work, E_FAIL);
}
