#include "ProjectBlock.h"

#include <cerrno>
#include <cstring>

#include "platform/FileSystem.h"

namespace ProjectBlock {

const Section kSectionTable[kSections] = {
    {"FILEPROJECT", nullptr},         {"FILEBOARDS", "boards.dat"},
    {"FILECAMERAS", "cameras.dat"},   {"FILEINTEGRATORS", "integrators.dat"},
    {"FILELANES", "lanes.dat"},       {"FILEPROCESSORS", "processors.dat"},
    {"FILETRIGGERS", "triggers.dat"},
};

namespace {

std::string InFolder(const std::string& folder, const std::string& name) {
    if (folder.empty())
        return name;
    return folder.back() == '/' ? folder + name : folder + "/" + name;
}

std::string FileOf(const Section& section, const std::string& projectFile) {
    return section.file != nullptr ? section.file : projectFile;
}

}  // namespace

std::string SectionPath(const std::string& folder, const Section& section,
                        const std::string& projectFile) {
    return InFolder(folder, FileOf(section, projectFile));
}

std::string OpeningTag(const Section& section) {
    return std::string("<") + section.tag + ">";
}

std::string ClosingTag(const Section& section) {
    return std::string("<\\") + section.tag + ">";
}

std::string Compose(const std::string& folder, const std::string& projectFile,
                    std::string* problem) {
    std::string block;
    for (const Section& section : kSectionTable) {
        const std::string path = SectionPath(folder, section, projectFile);
        std::string content;
        const platform::ReadResult read = platform::ReadWholeFile(path, content, kMaxBlock);
        std::string why;
        if (read == platform::ReadResult::CannotOpen)
            why = path + " cannot be read";
        else if (read == platform::ReadResult::TooLarge || block.size() + content.size() +
                                                                   OpeningTag(section).size() +
                                                                   ClosingTag(section).size() >=
                                                               kMaxBlock)
            why = "the project is too large to transfer: " + path + " takes the block past " +
                  std::to_string(kMaxBlock - 1) + " bytes";
        if (!why.empty()) {
            if (problem != nullptr)
                *problem = why;
            return std::string();
        }
        block += OpeningTag(section) + content + ClosingTag(section);
    }
    return block;
}

std::string KeyPrefix(const std::string& key) {
    return key.empty() ? std::string() : "<KEY>" + key + "<\\KEY>";
}

std::string ReadKeyFile(const std::string& path) {
    std::string text;
    if (platform::ReadWholeFile(path, text, 4096) != platform::ReadResult::Ok)
        return std::string();
    const size_t end = text.find_first_of("\r\n");
    return end == std::string::npos ? text : text.substr(0, end);
}

bool WriteSections(const std::string& buffer, const std::string& folder,
                   const std::string& projectFile, std::string* problem) {
    size_t opening[kSections];
    size_t closing[kSections];
    for (int i = 0; i < kSections; ++i) {
        opening[i] = buffer.find(OpeningTag(kSectionTable[i]));
        closing[i] = buffer.find(ClosingTag(kSectionTable[i]));
        if (opening[i] == std::string::npos || closing[i] == std::string::npos)
            return false;
    }
    for (int i = 0; i < kSections; ++i) {
        if (opening[i] > closing[i])
            return false;
        const size_t begin = opening[i] + OpeningTag(kSectionTable[i]).size();
        const size_t length = closing[i] > begin ? closing[i] - begin : 0;
        const std::string path = SectionPath(folder, kSectionTable[i], projectFile);
        if (!platform::WriteWholeFile(path, buffer.data() + begin, length)) {
            if (problem != nullptr)
                *problem =
                    "cannot write " + platform::FileNameOf(path) + ": " + std::strerror(errno);
            return false;
        }
    }
    return true;
}

}  // namespace ProjectBlock
