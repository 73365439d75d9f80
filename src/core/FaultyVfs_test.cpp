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

ShimFile *shimOf(sqlite3_file *file)
{
    return reinterpret_cast<ShimFile *>(file);
}

int shimClose(sqlite3_file *f)
{
    return shimOf(f)->real()->pMethods->xClose(shimOf(f)->real());
}
int shimRead(sqlite3_file *f, void *data, int amount, sqlite3_int64 offset)
{
    return shimOf(f)->real()->pMethods->xRead(shimOf(f)->real(), data, amount, offset);
}
int shimWrite(sqlite3_file *f, const void *data, int amount, sqlite3_int64 offset)
{
    if (g_failWrites) {
        ++g_failedWrites;
        return SQLITE_FULL;
    }
    return shimOf(f)->real()->pMethods->xWrite(shimOf(f)->real(), data, amount, offset);
}
int shimTruncate(sqlite3_file *f, sqlite3_int64 size)
{
    return shimOf(f)->real()->pMethods->xTruncate(shimOf(f)->real(), size);
}
int shimSync(sqlite3_file *f, int flags)
{
    return shimOf(f)->real()->pMethods->xSync(shimOf(f)->real(), flags);
}
int shimFileSize(sqlite3_file *f, sqlite3_int64 *size)
{
    return shimOf(f)->real()->pMethods->xFileSize(shimOf(f)->real(), size);
}
int shimLock(sqlite3_file *f, int level)
{
    return shimOf(f)->real()->pMethods->xLock(shimOf(f)->real(), level);
}
int shimUnlock(sqlite3_file *f, int level)
{
    return shimOf(f)->real()->pMethods->xUnlock(shimOf(f)->real(), level);
}
int shimCheckReservedLock(sqlite3_file *f, int *out)
{
    return shimOf(f)->real()->pMethods->xCheckReservedLock(shimOf(f)->real(), out);
}
int shimFileControl(sqlite3_file *f, int op, void *arg)
{
    return shimOf(f)->real()->pMethods->xFileControl(shimOf(f)->real(), op, arg);
}
int shimSectorSize(sqlite3_file *f)
{
    return shimOf(f)->real()->pMethods->xSectorSize(shimOf(f)->real());
}
int shimDeviceCharacteristics(sqlite3_file *f)
{
    return shimOf(f)->real()->pMethods->xDeviceCharacteristics(shimOf(f)->real());
}
int shimShmMap(sqlite3_file *f, int region, int size, int extend, void volatile **out)
{
    return shimOf(f)->real()->pMethods->xShmMap(shimOf(f)->real(), region, size, extend, out);
}
int shimShmLock(sqlite3_file *f, int offset, int n, int flags)
{
    return shimOf(f)->real()->pMethods->xShmLock(shimOf(f)->real(), offset, n, flags);
}
void shimShmBarrier(sqlite3_file *f)
{
    shimOf(f)->real()->pMethods->xShmBarrier(shimOf(f)->real());
}
int shimShmUnmap(sqlite3_file *f, int deleteFlag)
{
    return shimOf(f)->real()->pMethods->xShmUnmap(shimOf(f)->real(), deleteFlag);
}
int shimFetch(sqlite3_file *f, sqlite3_int64 offset, int amount, void **out)
{
    return shimOf(f)->real()->pMethods->xFetch(shimOf(f)->real(), offset, amount, out);
}
int shimUnfetch(sqlite3_file *f, sqlite3_int64 offset, void *page)
{
    return shimOf(f)->real()->pMethods->xUnfetch(shimOf(f)->real(), offset, page);
}

const sqlite3_io_methods Methods = {
    3,
    shimClose,
    shimRead,
    shimWrite,
    shimTruncate,
    shimSync,
    shimFileSize,
    shimLock,
    shimUnlock,
    shimCheckReservedLock,
    shimFileControl,
    shimSectorSize,
    shimDeviceCharacteristics,
    shimShmMap,
    shimShmLock,
    shimShmBarrier,
    shimShmUnmap,
    shimFetch,
    shimUnfetch,
};

int shimOpen(sqlite3_vfs *, sqlite3_filename name, sqlite3_file *file, int flags, int *outFlags)
{
    ShimFile *shim = shimOf(file);
    shim->base.pMethods = nullptr;
    const int result = g_real->xOpen(g_real, name, shim->real(), flags, outFlags);
    if (result == SQLITE_OK)
        shim->base.pMethods = &Methods;
    return result;
}

int shimDelete(sqlite3_vfs *, const char *name, int syncDir)
{
    return g_real->xDelete(g_real, name, syncDir);
}
int shimAccess(sqlite3_vfs *, const char *name, int flags, int *out)
{
    return g_real->xAccess(g_real, name, flags, out);
}
int shimFullPathname(sqlite3_vfs *, const char *name, int size, char *out)
{
    return g_real->xFullPathname(g_real, name, size, out);
}
int shimRandomness(sqlite3_vfs *, int size, char *out)
{
    return g_real->xRandomness(g_real, size, out);
}
int shimSleep(sqlite3_vfs *, int microseconds)
{
    return g_real->xSleep(g_real, microseconds);
}
int shimCurrentTime(sqlite3_vfs *, double *out)
{
    return g_real->xCurrentTime(g_real, out);
}
int shimLastError(sqlite3_vfs *, int size, char *out)
{
    return g_real->xGetLastError(g_real, size, out);
}
int shimCurrentTimeInt64(sqlite3_vfs *, sqlite3_int64 *out)
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
    g_vfs.xOpen = shimOpen;
    g_vfs.xDelete = shimDelete;
    g_vfs.xAccess = shimAccess;
    g_vfs.xFullPathname = shimFullPathname;
    g_vfs.xRandomness = shimRandomness;
    g_vfs.xSleep = shimSleep;
    g_vfs.xCurrentTime = shimCurrentTime;
    g_vfs.xGetLastError = shimLastError;
    g_vfs.xCurrentTimeInt64 = shimCurrentTimeInt64;
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
