// Any bytes as the result file: its three readers agree, and the file read as bytes is the file.

#include "ExchangeFolder.h"

#include "TYPVectorCATUnicodeString.h"
#include "VornToolsCommon.h"
#include "VornToolsString.h"

#include <cstring>
#include <limits>
#include <memory>

namespace {

VornToolsCommon::EnumResultStatus statusOf(const std::string& line) {
    if (line == ":cancel" || line == ":user_cancel") return VornToolsCommon::ResultStatusCancelled;
    return line == ":ok" ? VornToolsCommon::ResultStatusOk : VornToolsCommon::ResultStatusFailed;
}

void checkInfo(const std::string& bytes) {
    bool ended = false;
    std::vector<std::string> expected = linesOf(bytes, ended);
    if (!bytes.empty() && ended) expected.emplace_back();
    const std::string first = expected.empty() ? std::string() : expected.front();

    auto status = VornToolsCommon::ResultStatusOk;
    TYPVectorCATUnicodeString lines;
    require(VornToolsCommon::getResultInfo(status, lines) == S_OK, "a result file that is refused");
    require(status == statusOf(first), "the status");
    require(VornToolsCommon::getResultStatus() == status, "two answers for the status");
    require(static_cast<std::size_t>(lines.size()) + (expected.empty() ? 0 : 1) == expected.size(), "the lines' count");
    for (int i = 0; i < lines.size(); ++i)
        require(bytesOf(lines.at(i)) == expected[static_cast<std::size_t>(i) + 1], "a line");

    unsigned char ok = 7;
    unsigned char hosted = 7;
    const HRESULT code = VornToolsCommon::readResultFileAndGetClient(ok, hosted);
    require(FAILED(code) == first.empty(), "a first line that is empty or not");
    require(status != VornToolsCommon::ResultStatusOk || ok == 1, "a success that only one reader sees");
    require(hosted == 0 || (ok == 1 && expected.size() > 1 && expected[1].size() == 2), "a client without success");
}

void checkNumbers(VornToolsString& data) {
    for (unsigned int offset = 0; offset < data.size() + 2 && offset < 16; ++offset) {
        std::int32_t word = 0;
        for (unsigned int i = 0; i < 4; ++i) {
            const int byte = VornToolsCommon::getInt(&data, offset + i, 1, 1, 0);
            require(byte >= 0 && byte < 256, "a byte");
            word = static_cast<std::int32_t>(static_cast<std::uint32_t>(word) | static_cast<std::uint32_t>(byte)
                                                                                    << (8 * i));
        }
        require(VornToolsCommon::getInt(&data, offset, 4, 1, 0) == word, "a word of four bytes");
        const int swapped = VornToolsCommon::getInt(&data, offset, 4, 0, 0);
        const unsigned int little = VornToolsCommon::isLittleEndian(&data, static_cast<int>(offset));
        require((little != 0) == (swapped < 0 || (word >= 1 && word < swapped)), "the byte order");
    }
    int value = 7;
    require(VornToolsCommon::stringToInt(&data, &value) == 0, "a text that is no number is 0");
    long long exact = 0;
    if (std::sscanf(data.bytes(), "%lld", &exact) != 1) exact = 0;
    const bool fits = exact > std::numeric_limits<int>::min() && exact < std::numeric_limits<int>::max();
    require(!fits || value == exact, "a decimal number");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ExchangeFolder folder;
    const std::string bytes(data, data + size);
    folder.write("results", bytes);
    checkInfo(bytes);

    const std::unique_ptr<VornToolsString> read(VornToolsCommon::readBinaryFile(folder.nameOf("results").c_str()));
    require((read == nullptr) == bytes.empty(), "a file that is there and not read");
    require(!read || std::string(read->bytes(), read->size()) == bytes, "a file that is read as another");
    if (read) checkNumbers(*read);
    requireCleanliness();
    return 0;
}
