// A host that has set the user's locale: it shows in nothing that is read or written.
#include <clocale>
#include <locale>

#include "tests/environment/user_session.h"
#include "tests/support/locales.h"

namespace {

// Languages in which numbers have commas, and bytes above ASCII are letters.
struct Language {
    const char* name;
    const char* charmap;
};

class SessionInLanguage : public twtest::UserSession, public testing::WithParamInterface<Language> {
protected:
    ~SessionInLanguage() override { std::locale::global(std::locale::classic()); }
};

TEST_P(SessionInLanguage, isAsInEveryOther) {
    const twtest::ScopedLocale locale(GetParam().name, GetParam().charmap);
    if (!locale.active()) GTEST_SKIP() << "no such locale, and no way to make one";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    std::locale::global(std::locale(GetParam().name));
    run();
    EXPECT_EQ(dialogFolder(), fallbackFolder());
    EXPECT_EQ(log(), wholeLog());
    EXPECT_TRUE(hasRequest());
    EXPECT_STREQ(std::localeconv()->decimal_point, ",") << "the host's locale is the host's";
}

INSTANTIATE_TEST_SUITE_P(, SessionInLanguage,
                         testing::Values(Language{"de_DE.UTF-8", "UTF-8"},
                                         Language{"de_DE.ISO-8859-1", "ISO-8859-1"}),
                         [](const auto& row) {
                             return std::string(row.param.charmap).substr(0, 3);
                         });

}  // namespace
