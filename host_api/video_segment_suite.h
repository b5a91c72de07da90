// "MediaCore Video Segment Suite" version 9.
#pragma once

#include "host_api/premiere_param.h"
#include "host_api/premiere_types.h"

#pragma pack(push, 1)

#define kPrSDKVideoSegmentSuite "MediaCore Video Segment Suite"
constexpr csSDK_int32 kPrSDKVideoSegmentSuiteVersion = 9;

struct PrSDKVideoSegmentSuite {
    UnusedCallback AcquireVideoSegmentsID;
    UnusedCallback AcquireVideoSegmentsWithPreviewsID;
    UnusedCallback AcquireVideoSegmentsWithOpaquePreviewsID;
    UnusedCallback ReleaseVideoSegmentsID;
    UnusedCallback GetHash;
    UnusedCallback GetSegmentCount;
    UnusedCallback GetSegmentInfo;
    UnusedCallback AcquireNodeID;
    UnusedCallback ReleaseVideoNodeID;
    UnusedCallback GetNodeInfo;
    UnusedCallback GetNodeInputCount;
    UnusedCallback AcquireInputNodeID;
    UnusedCallback GetNodeOperatorCount;
    UnusedCallback AcquireOperatorNodeID;
    UnusedCallback IterateNodeProperties;
    UnusedCallback GetNodeProperty;
    UnusedCallback GetParamCount;
    // Value of a parameter at a clip time. inIndex leaves the input layer out: 0 is the first
    // parameter behind it. The record is to be cleared before: a value that is not there is not
    // written.
    prSuiteError (*GetParam)(csSDK_int32 inVideoNodeID, csSDK_int32 inIndex, PrTime inTime,
                             PrParam* outParam);
    UnusedCallback GetNextKeyframeTime;
    UnusedCallback TransformNodeTime;
    UnusedCallback GetVideoSegmentsProperties;
    UnusedCallback AcquireNodeForTime;
    UnusedCallback AcquireVideoSegmentsIDWithStreamLabel;
    UnusedCallback AcquireVideoSegmentsWithPreviewsIDWithStreamLabel;
    UnusedCallback AcquireVideoSegmentsWithOpaquePreviewsIDWithStreamLabel;
    UnusedCallback AcquireFirstNodeInTimeRange;
    UnusedCallback AcquireOperatorOwnerNodeID;
    UnusedCallback GetGraphicsTransformedParams;
    UnusedCallback HasGraphicsGroup;
    UnusedCallback GetGraphicsGroupID;
    UnusedCallback GetVideoSegmentsPropertiesExt;
    UnusedCallback AcquireFirstNodeInTimeRangeExt;
    UnusedCallback GetNodeTimeScale;
};
static_assert(sizeof(PrSDKVideoSegmentSuite) == 264 && alignof(PrSDKVideoSegmentSuite) == 1);

#pragma pack(pop)
