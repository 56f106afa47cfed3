#pragma once

namespace dovrex {

class HeadlessRunner;
struct HeadlessArgs;

// The headless runner's commands of ticket files, the prize check, the merge and the random pick
// (see docs/headless.md).
bool headless_AnswerToFile(HeadlessRunner& r, const HeadlessArgs& a);    // answer-tofile ...
bool headless_AnswerFromFile(HeadlessRunner& r, const HeadlessArgs& a);  // answer-fromfile ...
bool headless_Export(HeadlessRunner& r, const HeadlessArgs& a);          // export [<issue>]
bool headless_Import(HeadlessRunner& r, const HeadlessArgs& a);          // import <file>
bool headless_Check(HeadlessRunner& r, const HeadlessArgs& a);           // check [<issue>]
bool headless_Merge(HeadlessRunner& r, const HeadlessArgs& a);           // merge
bool headless_JiXuan(HeadlessRunner& r, const HeadlessArgs& a);          // jixuan <count> [<seed>]
bool headless_JiXuanExport(HeadlessRunner& r, const HeadlessArgs& a);    // jixuan-export

}  // namespace dovrex
