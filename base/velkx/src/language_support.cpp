// SPDX-License-Identifier: Apache-2.0

#include <velkx/language_support.h>

#include <mutex>
#include <shared_mutex>
#include <utility>

#include "language_file.h"

namespace {

std::shared_mutex mutex;
language_file::Texts texts;

}  // namespace

void CLanguageSupport::ResolveString(unsigned int id, std::string& text) {
    const std::shared_lock lock(mutex);
    const auto found = texts.find(id);
    if (found == texts.end()) {
        text.clear();
    } else {
        text = found->second;
    }
}

void CLanguageSupport::SetString(unsigned int id, const std::string& text) {
    const std::unique_lock lock(mutex);
    texts[id] = text;
}

void CLanguageSupport::Clear() {
    const std::unique_lock lock(mutex);
    texts.clear();
}

void CLanguageSupport::LoadFile(const std::string& path) {
    language_file::Texts loaded = language_file::Parse(language_file::Read(path), path);
    const std::unique_lock lock(mutex);
    loaded.merge(texts);  // a text of the file wins over one of the same number
    texts = std::move(loaded);
}
