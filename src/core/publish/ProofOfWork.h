#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>

// The sharing service's proof of work: a nonce (a decimal number as text) such that SHA-256 of
// prefix + nonce, read byte by byte as an unsigned number, is not above the target.
namespace proofofwork {

// The target's bytes from its hex text; none when it is not even-length hex.
std::optional<QByteArray> parseTarget(const QString& hex);
bool meetsTarget(const QByteArray& digest, const QByteArray& target);
bool verify(const QByteArray& prefix, const QByteArray& nonce, const QByteArray& target);

// Tries nonces 0, 1, 2... until one meets the target; none when cancel was set. progress gets
// the number of hashes tried every kProgressStep hashes (on the calling thread).
inline constexpr std::uint64_t kProgressStep = 1 << 16;
std::optional<std::uint64_t> solve(const QByteArray& prefix, const QByteArray& target,
                                   const std::atomic<bool>& cancel,
                                   const std::function<void(std::uint64_t)>& progress = {});

} // namespace proofofwork
