// Writes the documents of the example workspace anew: "write_workspace examples/workspace". They hold what CATIA writes
// about links, versions and imports and nothing else, so CATIA itself cannot open them.

#include "tests/support/DocumentImage.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

constexpr const char* kHome = "D:\\projects\\gear pump\\";

/** The identity of a container; the number tells documents apart. */
std::string identity(char number) {
    return std::string("\x00\x00\x00\x00\x00\x00\x1A\x60\x69\x15\x50\x00\x00\x00\x00", 15) + number;
}

std::string path(const std::string& name) { return kHome + name; }

/** An image with its version; everything that is not of a link is left out. */
std::string finished(DocumentImage& image) { return image.summary(5, 27, 2).bytes(); }

std::string part(const std::string& name) {
    DocumentImage image;
    return finished(image.application().properties(path(name), {}));
}

std::string pump() {
    DocumentImage image;
    return finished(image.properties(path("GearPump.CATProduct"),
                                     {ImageRecord::object("CATPart", path("Shaft.CATPart"), identity(1), 2),
                                      ImageRecord::object("CATPart", path("DriveGear.CATPart"), identity(2)),
                                      ImageRecord::object("CATPart", path("housing\\Housing.CATPart"), identity(3)),
                                      ImageRecord::object("CATPart", path("Relief_Valve.CATPart"), identity(4)),
                                      ImageRecord::object("CATPart", path("Old_Shaft.CATPart"), identity(5), 0)}));
}

std::string drawing() {
    DocumentImage image;
    return finished(image.properties(path("GearPump.CATDrawing"),
                                     {ImageRecord::object("CATProduct", path("GearPump.CATProduct"), identity(6), 3),
                                      ImageRecord::object("CATPart", path("Shaft.CATPart"), identity(1))}));
}

/** Designed in the assembly: takes the bore from the housing and a parameter from the gear. */
std::string shaft() {
    DocumentImage image;
    image.application().references({"..!Housing.1!Bore axis"});
    image.imports({{1, {DocumentImage::firstImportText}}}, {"InputToDoc:Doc!Parameters:Bore diameter!"});
    return finished(image.properties(path("Shaft.CATPart"),
                                     {ImageRecord::whole("CATPart", path("DriveGear.CATPart")),
                                      ImageRecord::object("CATProduct", path("GearPump.CATProduct"), identity(6))}));
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
