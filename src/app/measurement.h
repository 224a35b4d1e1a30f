// 启动计时: tells when the windows of the start stand, and what memory they take; for bench/run.
#pragma once

namespace jxc {

/// Does nothing unless the environment variable JXC_MEASURE is set: "NS" or "NS,catalogue", NS being the nanoseconds of
/// the monotonic clock at which the process was started. Then the start runs by itself: the splash is ended as soon as
/// it stands, the first operator logs in without a password, with "catalogue" the list of goods is opened, and the
/// program ends. Each milestone is a line of standard output: its name, milliseconds since the start, resident KB.
void measureStart();

}  // namespace jxc
