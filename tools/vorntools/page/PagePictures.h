#ifndef TOOLS_VORNTOOLS_PAGE_PAGE_PICTURES_H
#define TOOLS_VORNTOOLS_PAGE_PAGE_PICTURES_H

#include <cstddef>
#include <filesystem>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

/**
 * The previews of a page: in it as base64 text, in a folder beside it, or none. Files of the folder are named after
 * their content, so that a page that is there keeps its pictures whatever becomes of the new one.
 */
class PagePictures {
public:
    enum class Place {
        Fitting, ///< in the page up to kMostEmbedded bytes, else in the folder
        Page,
        Folder,
        None
    };
    static constexpr std::size_t kMostEmbedded = 16U << 20U;

    /** @param page receives pictures, where the data end; @param folder beside it */
    PagePictures(Place place, std::ostream& page, std::filesystem::path folder)
        : m_place(place), m_page(page), m_folder(std::move(folder)) {}
    /** Removes the files that this object wrote unless keep() was called. */
    ~PagePictures();
    PagePictures(const PagePictures&) = delete;
    PagePictures& operator=(const PagePictures&) = delete;

    bool areWanted() const { return m_place != Place::None; }
    /** Takes the picture of a document; each one's number is larger than the last one's.
     * @return false when it cannot be written */
    bool add(std::size_t document, std::string picture);
    /** The page has come to the place of the pictures: until then they wait, or stand in the folder. */
    void begin();
    /** Writes what is left, and where the pictures are. */
    void finish();
    /** The page is in its place: older pictures that it does not show can go. */
    void keep();

private:
    void embed(std::size_t document, const std::string& picture);
    void writeText();
    bool store(std::size_t document, const std::string& picture);
    bool moveToFolder();

    Place m_place;
    bool m_hasBegun = false;
    std::ostream& m_page;
    const std::filesystem::path m_folder;
    std::vector<std::pair<std::size_t, std::string>>
        m_waiting; ///< as long as their place is open, or the page has not come to it
    std::size_t m_waitingBytes = 0;
    std::string m_text;     ///< of the page, not written yet
    std::size_t m_next = 0; ///< document of the next line
    bool m_inBlock = false;
    std::vector<std::string> m_names; ///< of files, by document
    std::set<std::string> m_stored;
    std::vector<std::filesystem::path> m_written;
    bool m_madeFolder = false;
};

#endif
