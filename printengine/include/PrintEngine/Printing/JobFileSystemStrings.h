#pragma once

/// Names inside a job folder, and the words that stand for a path. The page files beside them are named by the decimal
/// index of the page.
namespace JobFileSystemStrings {

/// What the job is; see JobMetaData.
inline constexpr char const* MetaDataFileName = "MetaData";
/// Marks a job whose last page has been rendered.
inline constexpr char const* TransferDoneFileName = "TransferDone";
/// Marks a job that the user gave up.
inline constexpr char const* JobCanceledFileName = "JobCanceled";
/// Stands for no job where a path is expected.
inline constexpr char const* NoPage = "NO PAGE";

}  // namespace JobFileSystemStrings
