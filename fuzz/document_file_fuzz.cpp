// Any bytes as a document file; and, with a first byte of 'C', the recipe of a container whose streams are intact: its
// links must be those that a scan of the whole file finds. Of any bytes VornToolsDocumentLinks must tell what the
// operations on the image of the links tell.

#include "VornToolsDocumentFile.h"
#include "VornToolsLinks.h"

#include "fuzz/ExchangeFolder.h"
#include "tests/support/DocumentAnswers.h"
#include "tests/support/DocumentContainer.h"
#include "tests/support/DocumentImage.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

using namespace std::string_literals;

/** Takes decisions from the input; zeros behind its end. */
class Recipe {
public:
    Recipe(const std::uint8_t* data, std::size_t size) : m_data(data), m_left(size) {}
    bool isEmpty() const { return m_left == 0; }
    std::uint8_t byte() { return m_left > 0 ? --m_left, *m_data++ : std::uint8_t{0}; }
    std::uint8_t below(std::uint8_t limit) { return byte() % limit; }
    std::string bytes(std::size_t count) {
        std::string taken;
        while (taken.size() < count) taken += static_cast<char>(byte());
        return taken;
    }
    /** Geometry: no marker has bytes like these. */
    std::string noise() {
        std::string taken = bytes(below(64));
        for (char& character : taken) character = static_cast<char>(character | 0x80);
        // Long enough that streams behind it are read on their own.
        return below(3) == 0 ? taken + std::string(40000, '\x99') : taken;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_left;
};

/** The streams of a document, consistent with each other. */
struct Streams {
    explicit Streams(Recipe& recipe) {
        static constexpr const char* kTypes[] = {"CATPart", "CATProduct", "CATDrawing"};
        type = kTypes[recipe.below(3)];
        const bool isPart = type == "CATPart"s;
        if (isPart) data = DocumentImage().application().bytes();
        DocumentImage pointers;
        std::vector<ImageRecord> records;
        for (std::uint8_t left = recipe.below(6); left > 0; --left) addRecord(recipe, pointers, records);
        // A reference leads through a document that is used.
        const bool isUsing =
            std::any_of(records.begin(), records.end(), [](const auto& record) { return record.uses > 0; });
        DocumentImage features;
        if (isPart && isUsing && recipe.below(2)) features.references({"..!" + name(recipe), "..!..!" + name(recipe)});
        if (isPart && recipe.below(2)) features.raw("CATPrdInputProxy");
        product = features.raw(pointers.bytes()).bytes();
        properties = DocumentImage(recipe.below(4) != 0).properties("/own/" + name(recipe), records).bytes();
        if (recipe.below(8) != 0) summary = DocumentImage().summary(5, 9 + recipe.below(24), recipe.below(9)).bytes();
    }

    DocumentContainer container(Recipe& recipe) const {
        DocumentContainer file(recipe.below(8) == 0 ? "" : type);
        bool done[5] = {};
        for (std::uint8_t left = recipe.below(24); left > 0; --left) add(recipe.below(7), recipe, file, done);
        for (std::uint8_t kind = 0; kind < 5; ++kind) add(kind, recipe, file, done);
        return file;
    }

    std::string type, data, product, imports, properties, summary;

private:
    static std::string name(Recipe& recipe) { return recipe.bytes(1U + recipe.below(9)); }

    void addRecord(Recipe& recipe, DocumentImage& features, std::vector<ImageRecord>& records) {
        static constexpr const char* kTargets[] = {"CATPart", "CATProduct", "CATDrawing", "CATPart"};
        const std::uint8_t kind = recipe.below(4);
        const std::uint8_t uses = recipe.below(3);
        const auto number = static_cast<std::int32_t>(records.size() + 1);
        if (kind == 3) {
            if (uses > 0)
                imports =
                    DocumentImage().imports({{number, {4}}}, {"InputToDoc:Doc!Geometry:" + name(recipe) + "!"}).bytes();
            records.push_back(ImageRecord::whole(kTargets[kind], "/a/" + name(recipe), uses));
            return;
        }
        const std::string identity =
            "\0\0\0\0\0\0\x1A"s + recipe.bytes(1) + "\x60\0\0\0\0\0\0"s + static_cast<char>(number);
        for (std::uint8_t i = 0; i < uses; ++i) features.pointer(identity, recipe.below(2) ? "\x09\1\0\0\0"s : ""s);
        records.push_back(ImageRecord::object(kTargets[kind], "/a/" + name(recipe), identity, uses));
    }

    void add(std::uint8_t kind, Recipe& recipe, DocumentContainer& file, bool (&done)[5]) const {
        if (kind >= 5) {
            file.container(recipe.below(2) ? "CGMGeom" : "CATPrtCont", recipe.noise()).gap(recipe.noise());
            return;
        }
        if (std::exchange(done[kind], true)) return;
        const std::uint32_t pieces = 1U + recipe.below(8) / 7U;
        if (kind == 0 && !data.empty()) file.stream("Data", data, file.root(), pieces);
        if (kind == 1) file.container(recipe.below(6) == 0 ? "" : "CATProdCont", product);
        if (kind == 2 && !imports.empty()) file.container("CATXDocLinkCont", imports);
        if (kind == 3)
            file.stream("\x03"
                        "CATDocumentProperty",
                        properties);
        if (kind == 4)
            file.stream("\x03"
                        "CATPropertySets",
                        summary, file.root());
    }
};

/** @param image the whole file, or what holds its links */
void requireSameAnswers(const std::string& name, VornToolsString& image) {
    VornToolsDocumentLinks document;
    VornToolsFolderMemory folders;
    for (const char* const type : {"", "MML", "MMLASSY", "MMLDrawing"}) {
        require(document.read(name.c_str(), type, "", folders) == S_OK, "a document that can be read");
        require(DocumentAnswers::of(document) == DocumentAnswers::of(image, name, type, ""),
                "what is read at once is what each operation tells");
    }
}

void readEverything(VornToolsDocumentFile& file, std::size_t size) {
    for (int i = 1; i <= file.getEntryCount(); ++i) {
        CATUnicodeString name, date;
        int parent = 0, pieces = 0;
        unsigned char isStream = 0;
        unsigned int length = 0;
        require(file.getEntry(i, name, parent, isStream, length, pieces) == S_OK, "an entry");
        require(parent >= 0 && parent <= file.getEntryCount() && length <= size, "what an entry tells");
        file.getEntryDate(i, 1 + i % 3, date);
        // A part of each, the whole of the first ones: together they may be as many times the file as there are.
        const std::unique_ptr<VornToolsString> bytes(file.readStream(i, 3, i < 20 ? 0xFFFFFFFF : 7));
        require(!bytes || bytes->size() <= size, "a stream longer than the file");
    }
    const std::unique_ptr<VornToolsString> picture(file.readPreview());
    const std::unique_ptr<VornToolsString> image(file.readLinkImage());
    require((image != nullptr) == (size > 0), "an image of what can be read");
    require(!image || image->size() <= 2 * size + 64, "an image of the file's own size");
    file.getCondition();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ExchangeFolder folder;
    const bool isRecipe = size > 0 && data[0] == 'C';
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (isRecipe) {
        Recipe recipe(data + 1, size - 1);
        const Streams streams(recipe);
        bytes = streams.container(recipe).bytes();
    }
    folder.write("document", bytes);
    VornToolsDocumentFile file;
    require(file.open(folder.nameOf("document").c_str()) == S_OK, "a file that is there");
    readEverything(file, bytes.size());
    const std::unique_ptr<VornToolsString> image(file.readLinkImage());
    if (image) requireSameAnswers(folder.nameOf("document"), *image);
    if (isRecipe) {
        VornToolsString whole(bytes.data(), static_cast<int>(bytes.size()));
        requireSameAnswers(folder.nameOf("document"), whole);
        require(file.getCondition() == VornToolsDocumentFile::DocumentIntact, "an intact document");
    }
    file.close();
    requireTidiness();
    return 0;
}
