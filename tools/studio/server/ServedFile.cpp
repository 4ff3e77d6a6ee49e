#include "tools/studio/server/ServedFile.h"

#include "tools/studio/shared/Answers.h"
#include "tools/studio/shared/Routes.h"

namespace vx::tools::studio {

void serveFile(httplib::Server& server, const std::string& path, const web::StaticFile& file) {
    addGet(server, path, [file](const httplib::Request&, httplib::Response& response) {
        answerText(response, std::string(file.content),
                   std::string(file.mediaType) + "; charset=utf-8");
    });
}

} // namespace vx::tools::studio
