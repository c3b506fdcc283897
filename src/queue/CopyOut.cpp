#include "queue/CopyOut.h"

#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace zv {

Result<CopyOutEnd> copyOut(const std::vector<std::string>& drawings, const std::string& folder,
                           const CopyOutSteps& steps)
{
    // One that cannot be asked for counts as there.
    const auto isThere = [](const std::string& target) {
        const auto length = fileLength(target);
        return length || length.error().code != ErrorCode::NotFound;
    };
    std::size_t done = 0;
    for (const std::string& drawing : drawings) {
        const std::string name(fileNamePart(drawing));
        const std::string target = joinPath(folder, name);
        const bool stays = isSameFile(drawing, target) || (isThere(target) && !steps.overwrite(name));
        if (!stays) {
            if (const auto copied = copyIntoPlace(drawing, target); !copied)
                return Error{copied.error().code, namingFile(drawing, copied.error())};
        }
        if (!steps.goOn(++done) && done < drawings.size())
            return CopyOutEnd::GivenUp;
    }
    return CopyOutEnd::Done;
}

} // namespace zv
