#include "core/publish/ProofOfWork.h"

#include <QCryptographicHash>

#include <algorithm>
#include <charconv>

namespace proofofwork {

std::optional<QByteArray> parseTarget(const QString& hex)
{
    const QByteArray text = hex.trimmed().toLatin1();
    if (text.isEmpty() || text.size() % 2 != 0 ||
        !std::all_of(text.begin(), text.end(), [](char c) { return std::isxdigit(uchar(c)); }))
        return std::nullopt;
    return QByteArray::fromHex(text);
}

bool meetsTarget(const QByteArray& digest, const QByteArray& target)
{
    // Numbers of different lengths: the shorter one is read with leading zeros.
    const qsizetype width = std::max(digest.size(), target.size());
    for (qsizetype i = 0; i < width; ++i) {
        const qsizetype di = i - (width - digest.size());
        const qsizetype ti = i - (width - target.size());
        const uchar d = di >= 0 ? uchar(digest[di]) : 0;
        const uchar t = ti >= 0 ? uchar(target[ti]) : 0;
        if (d != t)
            return d < t;
    }
    return true;
}

bool verify(const QByteArray& prefix, const QByteArray& nonce, const QByteArray& target)
{
    return meetsTarget(QCryptographicHash::hash(prefix + nonce, QCryptographicHash::Sha256),
                       target);
}

std::optional<std::uint64_t> solve(const QByteArray& prefix, const QByteArray& target,
                                   const std::atomic<bool>& cancel,
                                   const std::function<void(std::uint64_t)>& progress)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    char digits[24];
    for (std::uint64_t nonce = 0;; ++nonce) {
        if (nonce % kProgressStep == 0 && nonce > 0) {
            if (cancel.load(std::memory_order_relaxed))
                return std::nullopt;
            if (progress)
                progress(nonce);
        }
        const auto end = std::to_chars(digits, digits + sizeof digits, nonce).ptr;
        hash.reset();
        hash.addData(prefix);
        hash.addData(QByteArrayView(digits, end - digits));
        const QByteArrayView digest = hash.resultView();
        // The common case, decided by the first byte, needs no copy.
        if (!target.isEmpty() && digest.size() == target.size() &&
            uchar(digest[0]) > uchar(target[0]))
            continue;
        if (meetsTarget(digest.toByteArray(), target))
            return nonce;
    }
}

} // namespace proofofwork
