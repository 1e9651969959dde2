#ifndef TESTS_SUPPORT_DOCUMENT_FOLDERS_H
#define TESTS_SUPPORT_DOCUMENT_FOLDERS_H

#include "tests/support/DocumentImage.h"
#include "tests/support/Program.h"

#include <cstdint>
#include <string>
#include <vector>

/** The program on folders of documents that point to each other. */
class DocumentFoldersTest : public ProgramTest {
protected:
    using Records = std::vector<ImageRecord>;

    static ImageRecord product(const std::string& path) {
        return ImageRecord::object("CATProduct", path, std::string(16, '\x07'));
    }
    static ImageRecord part(const std::string& path, std::int32_t uses = 1) {
        return ImageRecord::object("CATPart", path, std::string(16, '\x07'), uses);
    }
    void document(const std::string& name, const std::string& savedPath, const Records& records) {
        DocumentImage image;
        write(name, image.properties(savedPath, records).summary(5, 27, 1).bytes());
    }
};

#endif
