#include <gtest/gtest.h>

#include "quillmap/QuillmapCore.h"
#include "support/CallbackRecorder.h"

TEST(FrameSmoke, NullResultRecordIsReported) {
    qmtest::StartRecording();
    QmArrayOperationsDouble* ops = CSharp_new_ArrayOperationsDouble();
    const double data[] = {1, 2};
    CSharp_ArrayOperationsDouble_MinMax__SWIG_1(ops, data, 0, 2, nullptr);
    ASSERT_EQ(qmtest::Reports().size(), 1u);
    EXPECT_EQ(qmtest::Reports()[0].message, "MinMaxPointSearchResult< double > & type is null");
    CSharp_delete_ArrayOperationsDouble(ops);
}
