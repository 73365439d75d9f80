#include "core/FaultyVfs_test.h"

#include <sqlite3.h>

namespace {

sqlite3_vfs *g_real = nullptr;
bool g_failWrites = false;
int g_failedWrites = 0;

// A file of this layer holds the real layer's file right behind it.
struct ShimFile {
    sqlite3_file base;
    sqlite3_file *real() { return reinterpret_cast<sqlite3_file *>(this + 1); }
};

ShimFile *Shim(sqlite3_file *file)
{
    return reinterpret_cast<ShimFile *>(file);
}

int Close(sqlite3_file *f)
{
    return Shim(f)->real()->pMethods->xClose(Shim(f)->real());
}
int Read(sqlite3_file *f, void *data, int amount, sqlite3_int64 offset)
{
    return Shim(f)->real()->pMethods->xRead(Shim(f)->real(), data, amount, offset);
}
int Write(sqlite3_file *f, const void *data, int amount, sqlite3_int64 offset)
{
    if (g_failWrites) {
        ++g_failedWrites;
        return SQLITE_FULL;
    }
    return Shim(f)->real()->pMethods->xWrite(Shim(f)->real(), data, amount, offset);
}
int Truncate(sqlite3_file *f, sqlite3_int64 size)
{
    return Shim(f)->real()->pMethods->xTruncate(Shim(f)->real(), size);
}
int Sync(sqlite3_file *f, int flags)
{
    return Shim(f)->real()->pMethods->xSync(Shim(f)->real(), flags);
}
int FileSize(sqlite3_file *f, sqlite3_int64 *size)
{
    return Shim(f)->real()->pMethods->xFileSize(Shim(f)->real(), size);
}
int Lock(sqlite3_file *f, int level)
{
    return Shim(f)->real()->pMethods->xLock(Shim(f)->real(), level);
}
int Unlock(sqlite3_file *f, int level)
{
    return Shim(f)->real()->pMethods->xUnlock(Shim(f)->real(), level);
}
int CheckReservedLock(sqlite3_file *f, int *out)
{
    return Shim(f)->real()->pMethods->xCheckReservedLock(Shim(f)->real(), out);
}
int FileControl(sqlite3_file *f, int op, void *arg)
{
    return Shim(f)->real()->pMethods->xFileControl(Shim(f)->real(), op, arg);
}
int SectorSize(sqlite3_file *f)
{
    return Shim(f)->real()->pMethods->xSectorSize(Shim(f)->real());
}
int DeviceCharacteristics(sqlite3_file *f)
{
    return Shim(f)->real()->pMethods->xDeviceCharacteristics(Shim(f)->real());
}
int ShmMap(sqlite3_file *f, int region, int size, int extend, void volatile **out)
{
    return Shim(f)->real()->pMethods->xShmMap(Shim(f)->real(), region, size, extend, out);
}
int ShmLock(sqlite3_file *f, int offset, int n, int flags)
{
    return Shim(f)->real()->pMethods->xShmLock(Shim(f)->real(), offset, n, flags);
}
void ShmBarrier(sqlite3_file *f)
{
    Shim(f)->real()->pMethods->xShmBarrier(Shim(f)->real());
}
int ShmUnmap(sqlite3_file *f, int deleteFlag)
{
    return Shim(f)->real()->pMethods->xShmUnmap(Shim(f)->real(), deleteFlag);
}
int Fetch(sqlite3_file *f, sqlite3_int64 offset, int amount, void **out)
{
    return Shim(f)->real()->pMethods->xFetch(Shim(f)->real(), offset, amount, out);
}
int Unfetch(sqlite3_file *f, sqlite3_int64 offset, void *page)
{
    return Shim(f)->real()->pMethods->xUnfetch(Shim(f)->real(), offset, page);
}

const sqlite3_io_methods Methods = {
    3,
    Close,
    Read,
    Write,
    Truncate,
    Sync,
    FileSize,
    Lock,
    Unlock,
    CheckReservedLock,
    FileControl,
    SectorSize,
    DeviceCharacteristics,
    ShmMap,
    ShmLock,
    ShmBarrier,
    ShmUnmap,
    Fetch,
    Unfetch,
};

int Open(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *outFlags)
{
    ShimFile *shim = Shim(file);
    shim->base.pMethods = nullptr;
    const int result = g_real->xOpen(g_real, name, shim->real(), flags, outFlags);
    if (result == SQLITE_OK)
        shim->base.pMethods = &Methods;
    return result;
}

int Delete(sqlite3_vfs *, const char *name, int syncDir)
{
    return g_real->xDelete(g_real, name, syncDir);
}
int Access(sqlite3_vfs *, const char *name, int flags, int *out)
{
    return g_real->xAccess(g_real, name, flags, out);
}
int FullPathname(sqlite3_vfs *, const char *name, int size, char *out)
{
    return g_real->xFullPathname(g_real, name, size, out);
}
int Randomness(sqlite3_vfs *, int size, char *out)
{
    return g_real->xRandomness(g_real, size, out);
}
int SleepFor(sqlite3_vfs *, int microseconds)
{
    return g_real->xSleep(g_real, microseconds);
}
int CurrentTime(sqlite3_vfs *, double *out)
{
    return g_real->xCurrentTime(g_real, out);
}
int LastError(sqlite3_vfs *, int size, char *out)
{
    return g_real->xGetLastError(g_real, size, out);
}
int CurrentTimeInt64(sqlite3_vfs *, sqlite3_int64 *out)
{
    return g_real->xCurrentTimeInt64(g_real, out);
}

sqlite3_vfs g_vfs;

} // namespace

FaultyVfs::FaultyVfs()
{
    g_real = sqlite3_vfs_find(nullptr);
    g_failWrites = false;
    g_failedWrites = 0;
    g_vfs = {};
    g_vfs.iVersion = 2;
    g_vfs.szOsFile = static_cast<int>(sizeof(ShimFile)) + g_real->szOsFile;
    g_vfs.mxPathname = g_real->mxPathname;
    g_vfs.zName = "tavrino-faulty";
    g_vfs.xOpen = Open;
    g_vfs.xDelete = Delete;
    g_vfs.xAccess = Access;
    g_vfs.xFullPathname = FullPathname;
    g_vfs.xRandomness = Randomness;
    g_vfs.xSleep = SleepFor;
    g_vfs.xCurrentTime = CurrentTime;
    g_vfs.xGetLastError = LastError;
    g_vfs.xCurrentTimeInt64 = CurrentTimeInt64;
    sqlite3_vfs_register(&g_vfs, 1);
}

FaultyVfs::~FaultyVfs()
{
    sqlite3_vfs_unregister(&g_vfs);
    sqlite3_vfs_register(g_real, 1);
}

void FaultyVfs::failWritesAsDiskFull(bool fail)
{
    g_failWrites = fail;
}

int FaultyVfs::failedWrites() const
{
    return g_failedWrites;
}
