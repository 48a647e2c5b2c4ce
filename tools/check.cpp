#include "tools/check.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <memory>
#include <new>

#include "tools/bytes.h"
#include "tools/checksums.h"
#include "tools/errors.h"
#include "tools/level.h"

namespace tool {

namespace {

std::vector<Subject> chosen(const std::vector<std::string>& words) {
    std::vector<Subject> found = allSubjects();
    std::erase_if(found, [&](const Subject& s) {
        return !std::ranges::all_of(words, [&](const std::string& word) { return s.name.find(word) != std::string::npos; });
    });
    if (found.empty())
        throw UsageError(
            "no function and no conversion that is checked has all of these words in its name (zelcc list functions "
            "WORD and zelcc check --sums zelv find some)");
    return found;
}

int printSums(const CheckOptions& options) {
    for (const Subject& s : chosen(options.words)) std::printf("%s %s\n", s.name.c_str(), hexadecimal(s.sum()).c_str());
    return success;
}

// This program once more, at another level, which is chosen when the library is loaded.
class AtLevel {
  public:
    AtLevel(const std::string& level, const std::vector<std::string>& words) : level_(level) {
        std::vector<std::string> arguments = {"zelcc", "check", "--sums"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        std::vector<char*> pointers;
        for (std::string& a : arguments) pointers.push_back(a.data());
        pointers.push_back(nullptr);
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw FileError("no pipe can be had");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        setenv(levelVariable, level.c_str(), 1);
        const int error = posix_spawn(&process_, "/proc/self/exe", &actions, nullptr, pointers.data(), environ);
        unsetenv(levelVariable);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        if (error != 0) throw FileError("the program cannot be started at level " + level);
        output_.reset(fdopen(ends[0], "r"));
        if (!output_) throw std::bad_alloc();
    }

    const std::string& level() const { return level_; }

    std::map<std::string, std::string> sums() {
        std::map<std::string, std::string> found;
        char name[128], sum[32];
        while (std::fscanf(output_.get(), "%127s %31s", name, sum) == 2) found[name] = sum;
        int status = 0;
        waitpid(process_, &status, 0);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw DataError("the check at level " + level_ + " ended early");
        return found;
    }

  private:
    struct Close {
        void operator()(FILE* file) const { std::fclose(file); }
    };
    std::string level_;
    pid_t process_ = 0;
    std::unique_ptr<FILE, Close> output_;
};

struct Results {
    std::vector<std::string> levels;
    std::vector<std::map<std::string, std::string>> sums;  // of each level, by name
};

Results resultsAtAllLevels(const std::vector<Subject>& subjects, const std::vector<std::string>& words) {
    Results results;
    const std::vector<std::string> levels = levelsOfProcessor();
    if (levels.size() == 1) {  // this process is at it
        results.levels = levels;
        std::map<std::string, std::string>& sums = results.sums.emplace_back();
        for (const Subject& s : subjects) sums[s.name] = hexadecimal(s.sum());
        return results;
    }
    std::vector<std::unique_ptr<AtLevel>> runs;  // at once
    for (const std::string& level : levels) runs.push_back(std::make_unique<AtLevel>(level, words));
    for (const auto& run : runs) {
        results.levels.push_back(run->level());
        results.sums.push_back(run->sums());
    }
    return results;
}

// The levels at which the subject's result isn't the wanted one.
std::string differing(const Results& results, const std::string& name, const std::string& wanted) {
    std::string levels;
    for (size_t i = 0; i < results.levels.size(); ++i)
        if (results.sums[i].at(name) != wanted) levels += ' ' + results.levels[i];
    return levels;
}

void update(const std::string& path, const Results& results, const std::vector<Subject>& subjects) {
    std::ifstream old(path);
    Checksums list = readChecksums(std::string(std::istreambuf_iterator<char>(old), {}));
    for (const Subject& s : subjects) {
        const std::string& name = s.name;
        std::string sum = results.sums[0].at(name);
        std::vector<Published>& entries = list[name];
        const bool wasByProcessor = !entries.empty() && entries.back().sum.starts_with(byProcessor);
        if (s.dependsOnProcessor) {
            if (approximatesReciprocals()) sum = wasByProcessor ? entries.back().sum.substr(byProcessor.size()) : std::string();
            sum = std::string(byProcessor) + sum;
        }
        if (!entries.empty() && entries.back().sum == sum) continue;
        if (wasByProcessor) {  // the result is the same, and known of more processors
            entries.back().sum = sum;
            continue;
        }
        if (!entries.empty()) std::printf("%s has changed: say so in CHANGELOG.md\n", name.c_str());
        entries.push_back({ZELCC_VERSION, sum});
    }
    Sink sink(path);
    sink.write(writeChecksums(list));
    sink.close();
}

}  // namespace

int check(const CheckOptions& options) {
    if (options.printsSums) return printSums(options);
    const auto subjects = chosen(options.words);
    const Results results = resultsAtAllLevels(subjects, options.words);
    const Checksums published = readChecksums(publishedText());
    int wrong = 0, byLevels = 0;
    for (const Subject& s : subjects) {
        const std::string& name = s.name;
        const auto known = published.find(name);
        const bool isByVendor = s.dependsOnProcessor && approximatesReciprocals();
        const bool comparesLevels = isByVendor || !options.write.empty();
        byLevels += isByVendor;
        std::string problem;
        if (!comparesLevels && known == published.end()) problem = " is not in the published list";
        const std::string wanted(comparesLevels || known == published.end() ? results.sums[0].at(name)
                                                                            : wantedSum(known->second.back()));
        if (const std::string levels = differing(results, name, wanted); problem.empty() && !levels.empty())
            problem =
                (comparesLevels ? " differs from " + results.levels[0] + " at" : std::string(" is not as published at")) + levels;
        if (problem.empty()) continue;
        std::printf("%s%s\n", name.c_str(), problem.c_str());
        ++wrong;
    }
    std::string levels;
    for (const std::string& level : results.levels) levels += ' ' + level;
    std::printf("%zu functions and conversions at the levels%s: %d wrong.", subjects.size(), levels.c_str(), wrong);
    if (approximatesReciprocals()) std::printf(" %d depend on the processor's vendor: their levels were compared.", byLevels);
    std::printf("\n");
    if (wrong) return failure;
    if (!options.write.empty()) update(options.write, results, subjects);
    return success;
}

}  // namespace tool
