// FolderItem, FootageItem, and what they share with CompItem.
#include "engine/bind.h"

namespace host::script {

namespace {

template <auto Get>
constexpr auto get = guarded<read_member<&ScriptCall::self_item, Get>>;
template <auto Set, auto Argument>
constexpr auto set = guarded<write_member<&ScriptCall::self_item, Set, Argument>>;

duk_ret_t remove(ScriptCall& call) {
    model::Item& item = call.self_item();
    call.environment.project.delete_item(item);
    return call.nothing();
}

duk_ret_t type_name(ScriptCall& call) {
    switch (call.self_item().type()) {
        case model::ItemType::folder:
            return call.give(std::string_view("Folder"));
        case model::ItemType::comp:
            return call.give(std::string_view("Composition"));
        case model::ItemType::footage:
            break;
    }
    return call.give(std::string_view("Footage"));
}

duk_ret_t pixel_aspect(ScriptCall& call) {
    const model::PixelAspect aspect = call.self_item().pixel_aspect();
    return call.give(static_cast<double>(aspect.num) / aspect.den);
}

duk_ret_t folder_item(ScriptCall& call) {
    const auto& contents = call.self_item().folder_contents();
    const int number = call.whole_number(0);
    if (number < 1 || static_cast<std::size_t>(number) > contents.size()) {
        call.fail("item " + std::to_string(number) + " is out of range: the folder has " +
                  std::to_string(contents.size()));
    }
    return call.give(contents[static_cast<std::size_t>(number) - 1]);
}

duk_ret_t folder_num_items(ScriptCall& call) {
    return call.give(static_cast<int>(call.self_item().folder_contents().size()));
}

constexpr ScriptMethod kItemMethods[] = {
    {"remove", 0, guarded<remove>},
};

constexpr ScriptProperty kItemProperties[] = {
    {"name", get<&model::Item::name>, set<&model::Item::set_name, &ScriptCall::text>},
    {"id", get<&model::Item::id>, nullptr},
    {"typeName", guarded<type_name>, nullptr},
    {"parentFolder", get<&model::Item::parent_folder>, nullptr},
};

constexpr ScriptMethod kFolderMethods[] = {
    {"item", 1, guarded<folder_item>},
};

constexpr ScriptProperty kFolderProperties[] = {
    {"numItems", guarded<folder_num_items>, nullptr},
};

constexpr ScriptProperty kPictureProperties[] = {
    {"width", get<&model::Item::width>, nullptr},
    {"height", get<&model::Item::height>, nullptr},
    {"pixelAspect", guarded<pixel_aspect>, nullptr},
};

constexpr ScriptClass kItem = {ClassId::item, nullptr, {}, nullptr, kItemMethods, kItemProperties};
constexpr ScriptClass kPictureItem = {ClassId::picture_item, nullptr, ClassId::item, nullptr, {}, kPictureProperties};
constexpr ScriptClass kFolderItem = {ClassId::folder_item, "FolderItem",     ClassId::item, nullptr,
                                     kFolderMethods,       kFolderProperties};
constexpr ScriptClass kFootageItem = {ClassId::footage_item, "FootageItem", ClassId::picture_item, nullptr, {}, {}};

}  // namespace

void define_items(duk_context* ctx) {
    ScriptEnvironment& environment = ScriptEnvironment::of(ctx);
    environment.define_class(ctx, kItem);
    environment.define_class(ctx, kPictureItem);
    environment.define_class(ctx, kFolderItem);
    environment.define_class(ctx, kFootageItem);
}

}  // namespace host::script
