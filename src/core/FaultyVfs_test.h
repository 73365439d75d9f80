// For tests: while an instance lives it is SQLite's default file layer, passing
// everything to the real one until told to fail every write as a full disk would.
#pragma once

class FaultyVfs {
public:
    FaultyVfs();
    ~FaultyVfs();
    FaultyVfs(const FaultyVfs &) = delete;
    FaultyVfs &operator=(const FaultyVfs &) = delete;

    void failWritesAsDiskFull(bool fail);
    int failedWrites() const;
};
