#include "ProjectBlock.h"

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

std::string Compose(const std::string& folder, const std::string& projectFile) {
    std::string block;
    for (const Section& section : kSectionTable) {
        std::string content;
        if (platform::ReadWholeFile(SectionPath(folder, section, projectFile), content,
                                    kMaxBlock) != platform::ReadResult::Ok)
            content.clear();
        block += OpeningTag(section) + content + ClosingTag(section);
    }
    return block;
}

bool WriteSections(const std::string& buffer, const std::string& folder,
                   const std::string& projectFile) {
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
        platform::WriteWholeFile(SectionPath(folder, kSectionTable[i], projectFile),
                                 buffer.data() + begin, length);
    }
    return true;
}

}  // namespace ProjectBlock
