#ifndef MPUEVENT_TOOL_SUMMARY_HTMLSTYLE_H
#define MPUEVENT_TOOL_SUMMARY_HTMLSTYLE_H

#include <string_view>

namespace mpuevent::tool {

/// What a page begins with, up to its title.
inline constexpr std::string_view kHtmlHead = R"html(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; img-src data:">
<link rel="icon" href="data:,">
<style>
:root{--back:#f5f6f8;--card:#fff;--ink:#1c2430;--soft:#5b6676;--line:#e2e6ec;--e:#c8304a;
--w:#c98a00;--i:#3a78c9;--o:#8a8f98;--pad:#b9c0ca;--hole:#6b7688}
@media(prefers-color-scheme:dark){:root{--back:#12161c;--card:#1b2129;--ink:#e6eaf0;--soft:#98a3b3;
--line:#2c3540;--e:#ff6f85;--w:#efb540;--i:#6fa8f5;--o:#9aa1ab;--pad:#4a5563;--hole:#8d99aa}}
*{box-sizing:border-box}
body{margin:0;overflow-wrap:anywhere;background:var(--back);color:var(--ink);
font:15px/1.45 system-ui,"Segoe UI","DejaVu Sans",sans-serif;font-variant-numeric:tabular-nums}
main{max-width:1080px;margin:0 auto;padding:28px 20px 48px}
h1{font-size:1.6rem;line-height:1.2;margin:0 0 4px}
h2,summary{font-size:1.05rem;font-weight:600;margin:0 0 12px}
h3{font-size:.92rem;font-weight:600;margin:18px 0 6px}
p{margin:0 0 8px}
section,details{background:var(--card);border:1px solid var(--line);border-radius:10px;
padding:18px 20px;margin:16px 0 0}
summary{cursor:pointer}
details:not([open]) summary{margin:0}
.soft{color:var(--soft);font-size:.87rem}
.tiles{display:grid;grid-template-columns:repeat(auto-fit,minmax(130px,1fr));gap:12px;margin:20px 0 0}
.tile{background:var(--card);border:1px solid var(--line);border-radius:10px;padding:12px 16px}
.tile b{display:block;font-size:1.45rem;line-height:1.25}
.tile.e b{color:var(--e)}.tile.w b{color:var(--w)}.tile.i b{color:var(--i)}
.time{display:grid;grid-template-columns:104px minmax(0,1fr);column-gap:10px}
.names{display:grid;grid-auto-rows:40px;align-items:end;font-size:.82rem;color:var(--soft)}
.names span{padding-bottom:3px}
.ends{grid-column:2;display:flex;justify-content:space-between;gap:12px;border-top:1px solid var(--line);
padding-top:4px}
svg{display:block;width:100%}
.lanes{background:repeating-linear-gradient(transparent 0 39px,var(--line) 39px 40px)}
.strip{height:14px;background:var(--line);border-radius:4px}
svg .e,.bar .e{fill:var(--e);background:var(--e)}svg .w,.bar .w{fill:var(--w);background:var(--w)}
svg .i,.bar .i{fill:var(--i);background:var(--i)}svg .o,.bar .o{fill:var(--o);background:var(--o)}
svg .hole{fill:url(#hatch)}svg .pad{fill:var(--pad)}
#hatch rect{fill:var(--hole);opacity:.16}#hatch path{stroke:var(--hole);stroke-width:1.5}
table{width:100%;border-collapse:collapse}
th,td:not(:first-child),.names{white-space:nowrap}
th{font-weight:500;color:var(--soft);font-size:.82rem;text-align:right;padding:0 0 6px 12px}
td{text-align:right;padding:7px 0 7px 12px;border-top:1px solid var(--line);vertical-align:top}
th:first-child,td:first-child{text-align:left;padding-left:0}
.bar{display:flex;height:5px;margin-top:4px;border-radius:3px;overflow:hidden}
.tag{font-size:.75rem;border:1px solid var(--line);border-radius:99px;padding:0 8px;color:var(--soft);
white-space:nowrap}
ol{list-style:none;margin:0;padding:0}
li{display:grid;grid-template-columns:84px minmax(0,1fr);gap:10px;padding:7px 0;border-top:1px solid var(--line)}
li>b{text-align:right;font-weight:600}
li.plain{grid-template-columns:minmax(0,1fr)}
li div{min-width:0}
.key{display:inline-block;width:22px;height:10px;vertical-align:-1px;margin-right:4px}
@media(max-width:560px){main{padding:18px 10px 32px}section,details{padding:14px 12px}
.time{grid-template-columns:88px minmax(0,1fr);column-gap:6px}.names{font-size:.74rem}
th,td{padding-left:6px;font-size:.82rem}li{grid-template-columns:52px minmax(0,1fr)}
.ends{font-size:.75rem}.tiles{grid-template-columns:1fr 1fr}}
</style>
)html";

/// The hatching of what is missing, for every picture of the page.
inline constexpr std::string_view kHtmlHatch =
    R"html(<svg width="0" height="0" style="position:absolute"><defs><pattern id="hatch" width="6" height="6" patternUnits="userSpaceOnUse" patternTransform="rotate(45)"><rect width="6" height="6"/><path d="M0 0V6"/></pattern></defs></svg>
)html";

}  // namespace mpuevent::tool

#endif
