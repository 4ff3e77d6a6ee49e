#include <string>

#include <gtest/gtest.h>

#include "vxprivacy/services/core/CurlHandles.h"

// libcurl as a build with VXPRIVACY_LINK_CURL has it.
TEST(CurlLibrary, IsThereWithoutLoadingWhereItIsLinked) {
    std::string problem;
    const auto* curl = vx::services::CurlLibrary::load(problem);
    ASSERT_TRUE(curl) << problem;
    const vx::services::EasyHandle handle(curl->easyInit(), curl->easyCleanup);
    EXPECT_EQ(curl->easySetopt(handle.get(), CURLOPT_URL, "http://localhost/"), CURLE_OK);
    EXPECT_EQ(curl->easyInit, &curl_easy_init);
}
