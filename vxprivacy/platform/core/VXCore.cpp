// The core library's small classes: most hand their calls to the installed platform.

#include "vxprivacy/platform/core/Runtime.h"
#include "vxprivacy/platform/core/VXCoreInitialisation.h"
#include "vxprivacy/platform/core/VXLogger.h"
#include "vxprivacy/platform/core/VXUserDefaults.h"
#include "vxprivacy/platform/core/VXUtils.h"
#include "vxprivacy/platform/core/VXVariables.h"
#include "vxprivacy/platform/foundation/Text.h"

namespace vx {

VXCoreInitialisation::VXCoreInitialisation() {
    Runtime::current();
}

std::optional<std::string> VXUserDefaults::retrieveInfoFromUserDefaults(std::string_view key) {
    return platform().store.get(key);
}

void VXUserDefaults::saveInfoToUserDefaults(std::string_view value, std::string_view label) {
    platform().store.set(label, value);
}

void VXUserDefaults::saveIfAbsent(std::string_view value, std::string_view label) {
    platform().store.setIfAbsent(label, value);
}

void VXUserDefaults::standBy(std::string_view value, std::string_view label) {
    platform().store.standBy(label, value);
}

StoreTransaction VXUserDefaults::transaction() {
    return StoreTransaction(platform().store);
}

VXLogger& VXLogger::sharedInstance() {
    static VXLogger instance;
    return instance;
}

void VXLogger::logMessage(std::string_view message, int level) {
    platform().logger.log(message, level);
}

VXCoreVariables& VXCoreVariables::sharedInstance() {
    static VXCoreVariables instance;
    return instance;
}

std::optional<std::string> VXCoreVariables::getData(std::string_view name) const {
    return platform().coreVariables.get(name);
}

VXPredefinedVariables& VXPredefinedVariables::sharedInstance() {
    static VXPredefinedVariables instance;
    return instance;
}

std::optional<std::string> VXPredefinedVariables::getData(std::string_view name) const {
    return platform().predefinedVariables.get(name);
}

std::uint64_t VXPredefinedVariables::now() const {
    return nowMs() / 1000;
}

std::uint64_t VXPredefinedVariables::nowMs() const {
    return platform().clock.nowMilliseconds();
}

std::string VXPredefinedVariables::nowMsString() const {
    return std::to_string(nowMs());
}

std::optional<std::int64_t> VXUtils::nsNumberFromString(std::string_view text) {
    return decimalInteger(text);
}

std::int32_t VXUtils::numberFromNSString(std::string_view text) {
    return integerValue(text);
}

} // namespace vx
