#include "vxprivacy/hosts/web/HostTexts.h"

#include <map>

namespace vx::web {

namespace {

const std::map<std::string_view, HostTexts>& allTexts() {
    static const std::map<std::string_view, HostTexts> texts = {
        {"en",
         {.title = "Privacy settings",
          .leaves = "opens outside this page",
          .done = "Done",
          .countOn = "%1$@ of %2$@ on",
          .notYet = "Read to the end to refuse or accept.",
          .enabledNow = "You can now refuse or accept.",
          .connectionLost = "The connection is lost. Your last change has not arrived.",
          .retry = "Try again",
          .outOfDate = "This page is out of date: the settings were opened anew.",
          .showCurrent = "Show the current settings",
          .noScript = "You can read these settings here. To change them, allow JavaScript.",
          .newScreen = "New screen: %1$@",
          .search = "Search by name",
          .matches = "%1$@ of %2$@ shown",
          .noMatch = "Nothing has this name.",
          .answersConcernAll = "Accept and refuse all concern the whole list, not only what is "
                               "shown."}},
    };
    return texts;
}

} // namespace

const HostTexts& hostTexts(std::string_view language) {
    const auto& texts = allTexts();
    const auto found = texts.find(language.substr(0, language.find('-')));
    return found == texts.end() ? texts.at("en") : found->second;
}

} // namespace vx::web
