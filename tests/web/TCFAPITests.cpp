#include <gtest/gtest.h>

#include "vxprivacy/hosts/web/TCFAPI.h"

using vx::web::tcfAPIScript;
using vx::web::tcfAPIUpdate;
using vx::web::TCFEvent;

TEST(TCFAPI, PutsAnyTextIntoAScript) {
    const std::string update = tcfAPIUpdate("\"</script>\\\u2028\n\xFF", TCFEvent::CenterShown);
    EXPECT_EQ(update, "globalThis.__vxTCFAPI?.update("
                      R"("\"\u003c/script>\\\u2028\n\ufffd","cmpuishown");)");
    const std::string script = tcfAPIScript("{}");
    EXPECT_TRUE(script.ends_with("update(\"{}\",\"tcloaded\");"));
    EXPECT_EQ(script.find("</"), script.npos);
}
