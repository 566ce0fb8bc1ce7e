#pragma once
// Fixed-size tables of the plant state with checked indexing.
//
// Every table of the plant is sized once for the largest plant and never grows.
// An index outside a table is a fault of the caller: it raises RunError with the
// run-time error number 9 ("Subscript out of range") and leaves the table as it
// was. The event handlers of the station catch RunError the way their own
// error handling says (swallow it, or log one line), so a bad index from a PLC
// or a file never ends the program.

#include <cstdint>
#include <stdexcept>
#include <string>

namespace kal {

/// A run-time error of the station: the number is what the error handlers log
/// ("Err:" in the main cycle's log line).
struct RunError : std::runtime_error {
    int number;
    explicit RunError(int n, const std::string &what = "run-time error")
        : std::runtime_error(what), number(n) {}
};

/// Error numbers the station raises itself.
enum ErrorNumber : int {
    ERR_OVERFLOW = 6,       ///< a value does not fit its field (e.g. a byte)
    ERR_SUBSCRIPT = 9,      ///< index outside a table
    ERR_FILE = 53,          ///< file not found / cannot be opened
    ERR_ADDRESS_IN_USE = 10048,
};

[[noreturn]] inline void raiseBounds(const char *table, int index)
{
    throw RunError(ERR_SUBSCRIPT, std::string("subscript out of range: ") + table + "[" +
                                      std::to_string(index) + "]");
}

/// One-dimensional table, indices Lo..Lo+N-1.
template <typename T, int N, int Lo = 0>
struct Table {
    T v[N]{};
    static constexpr int lo = Lo;
    static constexpr int hi = Lo + N - 1;
    static constexpr int size = N;
    T &operator[](int i)
    {
        if (i < Lo || i > hi)
            raiseBounds("table", i);
        return v[i - Lo];
    }
    const T &operator[](int i) const
    {
        if (i < Lo || i > hi)
            raiseBounds("table", i);
        return v[i - Lo];
    }
    static bool valid(int i) { return i >= Lo && i <= hi; }
    void fill(const T &x)
    {
        for (auto &e : v)
            e = x;
    }
};

/// Two-dimensional table, stored as element a + A * b (the order the plant
/// uses: furnace + 8 * word, slot + 9 * channel, language + 6 * text id).
/// Each index is checked against its own range, so furnace 8 of an 8-furnace
/// table is an error even where a + A * b would still lie inside the storage.
template <typename T, int A, int B>
struct Table2 {
    T v[A * B]{};
    static constexpr int sizeA = A;
    static constexpr int sizeB = B;
    T &operator()(int a, int b)
    {
        if (a < 0 || a >= A)
            raiseBounds("table (first index)", a);
        if (b < 0 || b >= B)
            raiseBounds("table (second index)", b);
        return v[a + A * b];
    }
    const T &operator()(int a, int b) const
    {
        if (a < 0 || a >= A)
            raiseBounds("table (first index)", a);
        if (b < 0 || b >= B)
            raiseBounds("table (second index)", b);
        return v[a + A * b];
    }
    static bool valid(int a, int b) { return a >= 0 && a < A && b >= 0 && b < B; }
    void fill(const T &x)
    {
        for (auto &e : v)
            e = x;
    }
};

} // namespace kal
