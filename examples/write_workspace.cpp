// Writes the documents of the example workspace anew: "write_workspace examples/workspace". They hold what CATIA writes
// about links, versions and imports and nothing else, so CATIA itself cannot open them.

#include "tests/support/DocumentContainer.h"
#include "tests/support/DocumentImage.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using namespace std::string_literals;

namespace {

constexpr const char* kHome = "D:\\projects\\gear pump\\";

/** The identity of a container; the number tells documents apart. */
std::string identity(char number) {
    return std::string("\x00\x00\x00\x00\x00\x00\x1A\x60\x69\x15\x50\x00\x00\x00\x00", 15) + number;
}

std::string path(const std::string& name) { return kHome + name; }

/** The picture of every document: 130 x 110 points of grey, each 8 x 8 of them of one brightness. */
class Picture {
public:
    /** A ring on a light ground, as a baseline JPEG. */
    static std::string jpeg() {
        Picture picture;
        for (int row = 0; row < kRows; ++row)
            for (int column = 0; column < kColumns; ++column) picture.addBlock(isInRing(column, row) ? -40 : 128);
        return kHead + picture.finished() + "\xFF\xD9";
    }

private:
    static constexpr int kColumns = 17, kRows = 14;
    static const std::string kHead;

    static bool isInRing(int column, int row) {
        const int x = 2 * column - kColumns + 1, y = 2 * row - kRows + 1, distance = x * x + y * y;
        return distance > 20 && distance < 110;
    }

    /** The difference from the block before, which is none or takes eight bits, then the code for nothing else. */
    void addBlock(int brightness) {
        const int difference = brightness - m_last;
        m_last = brightness;
        if (difference == 0) {
            addBits(0, 1);
        } else {
            addBits(2, 2);
            addBits(difference > 0 ? difference : difference + 255, 8);
        }
        addBits(0, 1);
    }

    void addBits(int value, int count) {
        while (count-- > 0) {
            m_byte = m_byte << 1 | (value >> count & 1);
            if (++m_bits % 8 == 0) addByte();
        }
    }

    void addByte() {
        m_bytes += static_cast<char>(m_byte & 0xFF);
        if ((m_byte & 0xFF) == 0xFF) m_bytes += '\0';
        m_byte = 0;
    }

    std::string finished() {
        while (m_bits % 8 != 0) addBits(1, 1);
        return m_bytes;
    }

    std::string m_bytes;
    int m_last = 0, m_byte = 0, m_bits = 0;
};

const std::string Picture::kHead = "\xFF\xD8\xFF\xE0\0\x10JFIF\0\1\1\0\0\1\0\1\0\0"s // 1.1, points without size
                                   "\xFF\xDB\0\x43\0"s +
                                   std::string(64, '\x08') +                     // every coefficient in steps of 8
                                   "\xFF\xC0\0\x0B\x08\0\x6E\0\x82\1\1\x11\0"s + // 8 bits, 110 x 130, one component
                                   "\xFF\xC4\0\x15\0\1\1"s + std::string(14, '\0') + "\0\x08"s + // 0: none, 10: 8 bits
                                   "\xFF\xC4\0\x14\x10\1"s + std::string(15, '\0') + "\0"s +     // 0: the block ends
                                   "\xFF\xDA\0\x08\1\1\0\0\x3F\0"s;

using Records = std::vector<ImageRecord>;

const std::string kPropertyStream = "\x03"
                                    "CATDocumentProperty";
const std::string kPropertySets = "\x03"
                                  "CATPropertySets";
const std::string kPreview = "\x05"
                             "CATPreview";

/** A document of a class with what it points to and its version, behind the streams that it has already. */
std::string finished(DocumentContainer& file, const std::string& name, const Records& records) {
    return file.stream(kPropertyStream, DocumentImage().properties(path(name), records).bytes())
        .stream(kPropertySets, DocumentImage().summary(5, 27, 2).bytes())
        .stream(kPreview, "\0\0\0\0"s + Picture::jpeg())
        .bytes();
}

DocumentContainer newPart() {
    DocumentContainer file("CATPart");
    file.stream("Data", DocumentImage().application().bytes());
    return file;
}

std::string part(const std::string& name) {
    DocumentContainer file = newPart();
    return finished(file, name, {});
}

std::string pump() {
    DocumentContainer file("CATProduct");
    return finished(file, "GearPump.CATProduct",
                    {ImageRecord::object("CATPart", path("Shaft.CATPart"), identity(1), 2),
                     ImageRecord::object("CATPart", path("DriveGear.CATPart"), identity(2)),
                     ImageRecord::object("CATPart", path("housing\\Housing.CATPart"), identity(3)),
                     ImageRecord::object("CATPart", path("Relief_Valve.CATPart"), identity(4)),
                     ImageRecord::object("CATPart", path("Old_Shaft.CATPart"), identity(5), 0)});
}

std::string drawing() {
    DocumentContainer file("CATDrawing");
    return finished(file, "GearPump.CATDrawing",
                    {ImageRecord::object("CATProduct", path("GearPump.CATProduct"), identity(6), 3),
                     ImageRecord::object("CATPart", path("Shaft.CATPart"), identity(1))});
}

/** Designed in the assembly: takes the bore from the housing and a parameter from the gear. */
std::string shaft() {
    DocumentContainer file = newPart();
    file.container("CATProdCont", DocumentImage().references({"..!Housing.1!Bore axis"}).pointer(identity(6)).bytes());
    file.container("CATXDocLinkCont",
                   DocumentImage()
                       .imports({{1, {DocumentImage::firstImportText}}}, {"InputToDoc:Doc!Parameters:Bore diameter!"})
                       .bytes());
    return finished(file, "Shaft.CATPart",
                    {ImageRecord::whole("CATPart", path("DriveGear.CATPart")),
                     ImageRecord::object("CATProduct", path("GearPump.CATProduct"), identity(6))});
}

bool write(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream << bytes;
    return stream.good();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: write_workspace FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    const bool written = write(folder / "GearPump.CATProduct", pump()) &&
                         write(folder / "GearPump.CATDrawing", drawing()) && write(folder / "Shaft.CATPart", shaft()) &&
                         write(folder / "DriveGear.CATPart", part("DriveGear.CATPart")) &&
                         write(folder / "Key.CATPart", part("Key.CATPart")) &&
                         write(folder / "housing" / "Housing.CATPart", part("housing\\Housing.CATPart")) &&
                         write(folder / "housing" / "Cover.CATPart", part("housing\\Cover.CATPart")) &&
                         write(folder / "housing" / std::filesystem::u8path("Dichtung_\xC3\x96l.CATPart"),
                               part("housing\\Dichtung_\xC3\x96l.CATPart"));
    if (!written) std::fprintf(stderr, "cannot write into %s\n", argv[1]);
    return written ? 0 : 1;
}
