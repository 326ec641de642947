// The sparse store: records in a trie, a level for each integer of the key.
#pragma once

#include <cstdint>

#include "foundation/visibility.h"
#include "stores/datastorage.h"

namespace optxv {

/// A cell of the trie, as far as all levels share it. Siblings stand in ascending order of keys.
struct sparsecell {
  sparsecell* fnext;  ///< the next sibling, nil at the end
  std::int32_t fkey;
};

/// A cell above the last level. The root, at level 0, is one without siblings and key.
struct sparseinner : sparsecell {
  sparsecell* fdown;  ///< the first child
};

/// The cells of one way from the root down; entry 0 is the root, entry k the cell at level k.
using sparsepath = heaparray<sparsecell*>;

/// The sparse store. Records that share the front of their key share its cells, and records in
/// order are found from where the last search ended. memoryused counts 8 bytes and the data for a
/// record, 12 bytes for a cell above (the root is not counted).
///
/// There is one path for loading and reading. REQUIRES: no load and no end of an assign bracket
/// while a read goes on. Loads may follow reads and brackets: they go on after the last record.
/// To clear and to prune takes recursion as deep as the dimension.
class OPTXV_EXPORT tzemadatasparse : public tzemadatastore {
 public:
  tzemadatasparse(std::int32_t n, std::int32_t datasize, const void* defaultdata);
  ~tzemadatasparse() override;

  std::int32_t getcount() const override { return fleafcount; }
  void clear() override;
  void insertrecord(tzemadatasearcher* searcher, const std::int32_t* key,
                    const void* data) override;
  /// A key equal to the last one gives that record the new data. KEEP: a key below the last one is
  /// not noticed; the trie loses its order, reads give what they meet, and verify reports it.
  void loadrecord(const std::int32_t* key, const void* data) override;
  bool startread() override;
  void* getnextkey(std::int32_t* key) override;
  void endassign() override;
  std::int64_t memoryused() const override;
  tzemadatasearcher* createsearcher() override;

  std::int32_t innercount() const noexcept { return finnercount; }  ///< cells between root and last
  std::int32_t leafcount() const noexcept { return fleafcount; }    ///< cells at the last level

 private:
  friend class tzemadatasparsesearcher;

  sparsecell* getcell(std::int32_t level);
  void freecell(sparsecell* cell, std::int32_t level);
  void freechain(sparsecell* cell, std::int32_t level);
  sparsecell* prunechain(sparsecell* cell, std::int32_t level);
  std::int32_t cellbytes(std::int32_t level) const;
  void* leafdata(sparsecell* leaf) const noexcept;
  sparsecell* newchain(std::int32_t level, const std::int32_t* key);
  void add(const sparsepath& path, std::int32_t level, bool behind, const std::int32_t* key);
  void seat(const sparsepath& path, std::int32_t level) const noexcept;
  void seatlast() noexcept;

  sparsepath fpath;
  std::int32_t finnercount = 0;
  std::int32_t fleafcount = 0;
  bool fatlast = false;  ///< whether fpath is that of the last record
};

/// The searcher of the sparse store, with a path of its own.
class OPTXV_EXPORT tzemadatasparsesearcher : public tzemadatasearcher {
 public:
  explicit tzemadatasparsesearcher(tzemadatasparse& store);

  void startsearch() override;
  bool search(const std::int32_t* key, void*& data) override;

  /// The deepest level at which the last search found its key.
  std::int32_t matched() const noexcept { return fmatched; }

 private:
  friend class tzemadatasparse;

  tzemadatasparse& trie() const noexcept { return *static_cast<tzemadatasparse*>(fstore); }
  bool seek(std::int32_t level, std::int32_t value);

  sparsepath fpath;
  std::int32_t fdimension;
  std::int32_t fmatched = 0;
};

}  // namespace optxv
