#ifndef TOOLS_VORNTOOLS_OUTPUT_FILE_H
#define TOOLS_VORNTOOLS_OUTPUT_FILE_H

#include <filesystem>
#include <fstream>

/**
 * A file that is written beside its final place and put there when it is whole: what was there before stays until then,
 * and for good when it is never committed.
 */
class OutputFile {
public:
    explicit OutputFile(std::filesystem::path target);
    /** Removes what was not committed. */
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /** Bad when the file cannot be made or a write was refused. */
    std::ofstream& stream() { return m_stream; }
    /** The file until it is put into its place, for those that write it by other means. */
    const std::filesystem::path& part() const { return m_part; }
    /** Closes the file and puts it into its place. @return whether all of it is there now */
    bool commit();

private:
    const std::filesystem::path m_target, m_part;
    std::ofstream m_stream;
    bool m_isMine = false;
};

/** Whether anything has that name, be it a link that leads nowhere. */
bool isThere(const std::filesystem::path& file);

#endif
