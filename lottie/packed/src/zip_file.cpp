// Animations in a zip archive with a manifest.
#include "zip_file.h"

#include <zip.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "companions.h"
#include "entry_name.h"
#include "manifest.h"
#include "unpack_limit.h"

namespace lottie::packed {
namespace {

constexpr zip_uint32_t kBestCompression = 9;

std::string sentence_of(zip_error_t& error) {
    switch (zip_error_code_zip(&error)) {
        case ZIP_ER_NOZIP:
            return "is a zip archive that is cut off or damaged, for the list of its entries is missing at the end: "
                   "get "
                   "a whole copy";
        case ZIP_ER_EXISTS:
            return "holds two entries of one name: leave one of them out";
        default:
            return std::string("is a damaged zip archive (") + zip_error_strerror(&error) + "): pack it again";
    }
}

// An archive in memory, open in libzip.
class OpenZip {
  public:
    // Throws ArchiveError.
    OpenZip(const std::string& bytes, int flags) {
        zip_error_t error;
        zip_error_init(&error);
        // libzip 1.7 frees the memory after a rewriting whether it was given it or not.
        void* copy = std::malloc(bytes.size());
        if (copy == nullptr) throw std::bad_alloc();
        std::memcpy(copy, bytes.data(), bytes.size());
        source_ = zip_source_buffer_create(copy, bytes.size(), 1, &error);
        if (source_ == nullptr) {
            std::free(copy);
            throw std::bad_alloc();
        }
        zip_source_keep(source_);  // zip_ has one share, this class the other
        zip_ = zip_open_from_source(source_, flags, &error);
        if (zip_ != nullptr) return;
        const std::string sentence = sentence_of(error);
        zip_error_fini(&error);
        zip_source_free(source_);
        zip_source_free(source_);
        throw ArchiveError(sentence);
    }
    ~OpenZip() {
        if (zip_ != nullptr) zip_discard(zip_);
        zip_source_free(source_);
    }
    OpenZip(const OpenZip&) = delete;

    zip_t* get() const { return zip_; }

    // Writes the changes and gives the whole archive.
    std::string close() {
        if (zip_close(zip_) != 0) {
            throw ArchiveError(std::string("cannot be packed again (") + zip_strerror(zip_) + ")");
        }
        zip_ = nullptr;
        zip_stat_t facts;
        zip_stat_init(&facts);
        if (zip_source_stat(source_, &facts) != 0 || zip_source_open(source_) != 0) throw std::bad_alloc();
        std::string bytes(static_cast<std::size_t>(facts.size), '\0');
        const zip_int64_t count = zip_source_read(source_, bytes.data(), bytes.size());
        zip_source_close(source_);
        if (count != static_cast<zip_int64_t>(bytes.size()))
            throw std::logic_error("an archive in memory was not read");
        return bytes;
    }

  private:
    zip_source_t* source_;
    zip_t* zip_ = nullptr;
};

zip_stat_t facts_of(zip_t* zip, zip_uint64_t index) {
    zip_stat_t facts;
    zip_stat_init(&facts);
    if (zip_stat_index(zip, index, ZIP_FL_ENC_RAW, &facts) != 0)
        throw ArchiveError("is a damaged zip archive: pack it again");
    return facts;
}

// Only methods that every player and every browser unpacks.
void refuse_method(const zip_stat_t& facts, const std::string& entry) {
    if (facts.comp_method == ZIP_CM_STORE || facts.comp_method == ZIP_CM_DEFLATE) return;
    throw ArchiveError("is packed with method " + std::to_string(facts.comp_method) +
                           ", which players do not know: pack it with the ordinary one, deflate",
                       entry);
}

std::string unpack(zip_t* zip, zip_uint64_t index, const std::string& entry, std::size_t most) {
    const zip_stat_t facts = facts_of(zip, index);
    refuse_method(facts, entry);
    const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file(zip_fopen_index(zip, index, 0), zip_fclose);
    if (file == nullptr)
        throw ArchiveError(std::string("cannot be unpacked (") + zip_strerror(zip) + "): pack it again", entry);
    UnpackLimit limit(static_cast<std::size_t>(facts.comp_size), most, entry);
    std::array<char, 1 << 16> block;
    std::string text;
    for (;;) {
        const zip_int64_t count = zip_fread(file.get(), block.data(), block.size());
        if (count < 0) {
            throw ArchiveError(std::string("is damaged (") + zip_file_strerror(file.get()) + "): pack it again", entry);
        }
        if (count == 0) return text;
        limit.add(static_cast<std::size_t>(count));
        text.append(block.data(), static_cast<std::size_t>(count));
    }
}

class ZipFile : public PackedFile {
  public:
    explicit ZipFile(std::string all) {
        bytes = std::move(all);
        const OpenZip zip(bytes, ZIP_RDONLY | ZIP_CHECKCONS);
        const auto indices = look_at_entries(zip.get());
        const auto manifest_index = indices.find(std::string(kManifest));
        if (manifest_index == indices.end()) {
            throw ArchiveError(
                "is a zip archive without manifest.json, so no .lottie file: unpack it and work on the "
                "plain files");
        }
        const Manifest manifest =
            read_manifest(unpack(zip.get(), manifest_index->second, std::string(kManifest), kMaxManifestBytes));
        std::size_t left = kMaxBytes;
        for (const std::string& id : manifest.ids) {
            PackedAnimation animation{id, entry_for(id, manifest, indices), ""};
            indices_.push_back(indices.at(animation.entry));
            animation.text = unpack(zip.get(), indices_.back(), animation.entry, left);
            left -= animation.text.size();
            animations.push_back(std::move(animation));
        }
        read_companions(zip.get(), indices, left);
    }

    Form form() const override { return Form::lottie; }

    std::string write(const std::vector<std::string>& texts,
                      const std::map<std::string, std::string>& layer_names) const override {
        std::map<zip_uint64_t, std::string> machines;
        for (const auto& [index, machine] : machines_) {
            for (const std::string& layer : layers_named_in(machine)) {
                if (layer_names.contains(layer)) machines[index] = with_layers_renamed(machine, layer_names);
            }
        }
        OpenZip zip(bytes, 0);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            if (texts[i] != animations[i].text) replace(zip.get(), indices_[i], texts[i]);
        }
        for (const auto& [index, machine] : machines) replace(zip.get(), index, machine);
        return zip.close();
    }

  private:
    using EntryIndices = std::unordered_map<std::string, zip_uint64_t>;

    // State machines and themes. What cannot be unpacked is of no use to players either and asks for nothing.
    void read_companions(zip_t* zip, const EntryIndices& indices, std::size_t left) {
        for (const auto& [entry, index] : indices) {
            const bool is_machine = entry.starts_with("s/");
            if (!entry.ends_with(".json") || (!is_machine && !entry.starts_with("t/"))) continue;
            try {
                std::string text = unpack(zip, index, entry, std::min(left, kMaxManifestBytes));
                left -= text.size();
                if (is_machine) {
                    references.layers.merge(layers_named_in(text));
                    machines_.emplace(index, std::move(text));
                } else {
                    references.slots.merge(slots_filled_by(text));
                }
            } catch (const ArchiveError&) {
                continue;
            }
        }
    }

    // Every entry's index by its name. Entries that nobody should unpack are refused although nothing is unpacked here:
    // the result would carry them on.
    static EntryIndices look_at_entries(zip_t* zip) {
        EntryIndices indices;
        const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(zip, 0));
        if (count > kMaxEntries) {
            throw ArchiveError("holds " + std::to_string(count) + " entries, and more than " +
                               std::to_string(kMaxEntries) +
                               " are not taken: leave out what its animations do not need");
        }
        for (zip_uint64_t index = 0; index < count; ++index) {
            const char* raw = zip_get_name(zip, index, ZIP_FL_ENC_RAW);
            const std::string name = raw != nullptr ? raw : "";
            refuse_name(name);
            if (facts_of(zip, index).encryption_method != ZIP_EM_NONE) {
                throw ArchiveError("is encrypted: pack the archive without a password", name);
            }
            indices.emplace(name, index);
        }
        return indices;
    }

    static std::string entry_for(const std::string& id, const Manifest& manifest, const EntryIndices& indices) {
        for (const std::string_view folder : manifest.folders) {
            std::string entry = std::string(folder) + id + ".json";
            if (indices.contains(entry)) return entry;
        }
        throw ArchiveError("is named by the manifest and not in the archive: add it, or leave it out of manifest.json",
                           std::string(manifest.folders.front()) + id + ".json");
    }

    // The text's bytes must stay until the archive is closed.
    static void replace(zip_t* zip, zip_uint64_t index, const std::string& text) {
        const zip_stat_t old = facts_of(zip, index);
        zip_source_t* source = zip_source_buffer(zip, text.data(), text.size(), 0);
        if (source == nullptr) throw std::bad_alloc();
        if (zip_file_replace(zip, index, source, 0) != 0) {
            zip_source_free(source);
            throw ArchiveError(std::string("cannot be packed again (") + zip_strerror(zip) + ")");
        }
        const auto method = static_cast<zip_int32_t>(old.comp_method);
        if (zip_set_file_compression(zip, index, method, kBestCompression) != 0 ||
            zip_file_set_mtime(zip, index, old.mtime, 0) != 0) {
            throw ArchiveError(std::string("cannot be packed again (") + zip_strerror(zip) + ")");
        }
    }

    std::vector<zip_uint64_t> indices_;  // of the animations
    std::map<zip_uint64_t, std::string> machines_;
};

}  // namespace

std::unique_ptr<PackedFile> read_zip(std::string bytes) {
    return std::make_unique<ZipFile>(std::move(bytes));
}

}  // namespace lottie::packed
