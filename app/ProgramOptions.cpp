#include "ProgramOptions.h"

#include <cstdlib>
#include <cstring>

ProgramOptions ParseProgramOptions(int argc, char** argv) {
    ProgramOptions options;
    options.startMode = ParseStartMode(argc, argv);
    const char* program = std::strrchr(argv[0], '/');
    options.runtime =
        std::strcmp(program != nullptr ? program + 1 : argv[0], "corvane-runtime") == 0;
    for (int i = options.startMode == kStartNormal ? 1 : 2; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        auto takesValue = [&](const char* name) {
            if (argument != name)
                return false;
            if (!hasValue)
                options.errors.push_back(std::string(name) + " needs a value");
            return hasValue;
        };
        if (takesValue("--seconds"))
            options.seconds = std::atoi(argv[++i]);
        else if (takesValue("--listen"))
            options.listen = argv[++i];
        else if (takesValue("--allow"))
            options.allow.push_back(argv[++i]);
        else if (takesValue("--key-file"))
            options.keyFile = argv[++i];
        else if (takesValue("--download"))
            options.download = argv[++i];
        else if (takesValue("--upload"))
            options.upload = argv[++i];
        else if (argument == "--runtime")
            options.runtime = true;
        else if (argument == "--headless")
            options.headless = true;
        else if (argument == "--rollback")
            options.rollback = true;
        else if (argument == "--demo")
            continue;
        else if (argument.compare(0, 2, "--") == 0)
            options.errors.push_back("unknown option " + argument);
        else if (!argument.empty() && argument.front() != '-')
            options.projectFile = argument;
    }
    return options;
}
