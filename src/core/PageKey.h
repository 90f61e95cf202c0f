#pragma once

/// The pages of the web site, in the order in which it keeps and renders them.
enum class PageKey {
    AdminMain,
    AdminReplays,
    AdminReplaysUpdate,
    AdminServerControl,
    AdminServerControlUpdate,
    AdminServerOptions,
    AdminServerOptionsUpdate,
    AdminSystemOptions,
    AdminSystemOptionsUpdate,
    AdminStatusOptions,
    AdminStatusOptionsUpdate,
    AdminModList,
    PublicStatus,
};
