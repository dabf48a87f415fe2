// Tests of the names of dropped files.

#include "editor/model/uri_list.h"

#include <gmock/gmock.h>

namespace tarquil {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(UriList, NamesFilesOfThisMachine) {
    EXPECT_THAT(files_of_uri_list("# dragged\r\nfile:///home/a%20b/%C3%A9.tqi\r\n"
                                  "http://example.org/x.tqi\r\nfile://desk/tmp/c.tqb"),
                ElementsAre("/home/a b/\xC3\xA9.tqi", "/tmp/c.tqb"));
}

TEST(UriList, PassesOverWhatIsDamaged) {
    EXPECT_THAT(files_of_uri_list(""), IsEmpty());
    EXPECT_THAT(files_of_uri_list("file://\nfile:///a%2\nfile:///a%zz\nfile:///a%00b\nfile:/x\n%"),
                IsEmpty());
}

} // namespace

} // namespace tarquil
