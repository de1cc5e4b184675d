#include "ZqvResrc.h"

#include <initializer_list>
#include <iterator>

#include "ResrcDBList.h"

namespace ZQV {

namespace {

// Name, environment name, command-line key, help line; a row's place is its number. Some help lines
// differ from their keys in a letter: they print as they stand.
constexpr ResrcDBItem rows[] = {
    {"background", "zqvback", "bg", "-bg color    Background color"},
    {"calibration", "zqvcalib", "ca", "-ca cal      Calibration data"},
    {"city_file", "zqvcity", "cf", "-cf file     City database file"},
    {"color_cgrid", "zqvclrcgrid", "cocg", "-cogr color  Grid color for fill plots"},
    {"color_clabel", "zqvclrclab", "cocl", "-cocl color  Contour label color for fill plots"},
    {"color_cmap", "zqvclrcmap", "cocm", "-cocm color  Map color for fill plots"},
    {"color_cont", "zqvclrcont", "coco", "-coco color  Contour line color"},
    {"color_data", "zqvclrdat", "cod", "-cod color   Data color and attribs"},
    {"color_fill", "zqvclrfill", "cof", "-cof clr...  Fill colors and attribs"},
    {"color_front", "zqvclrfront", "cofr", "-cofr clr... Front colors and attribs"},
    {"color_grid", "zqvclrgrid", "cog", "-cog color  Grid color"},
    {"color_label", "zqvclrlab", "cola", "-cola color  Label color"},
    {"color_line", "zqvclrln", "coln", "-coln color  Lat-lon line color"},
    {"color_map", "zqvclrmap", "com", "-com color   Map color and attribs"},
    {"color_sound", "zqvclrsnd", "cosd", "-codf clr... Parcel sounding color"},
    {"color_table", "zqvclrtbl", "ct", "-ct files... Color table file"},
    {"color_text", "zqvclrtxt", "cot", "-cot color   Text color and attribs"},
    {"color_watch", "zqvclrwatch", "cowa", "-cowa clr... Watch box colors"},
    {"con_base", "zqvconbase", "cb", "-cb base     Contour base value"},
    {"con_path", "zqvcpath", "cp", "-cp path     Converted data path"},
    {"con_interval", "zqvconint", "ci", "-ci intrvl   Contour interval"},
    {"current", "zqvcurrent", "cu", "-cu [hour]   Currency of input data"},
    {"data_path", "zqvdpath", "dp", "-dp path     Data path"},
    {"device", "zqvdevice", "de", "-de device   Device type and params"},
    {"draw", "zqvdraw", "dr", "-dr types... Draw these types"},
    {"file_path", "zqvfpath", "fp", "-fp path     File path"},
    {"filename", "zqvfilenm", nullptr, "filenames... Filenames"},
    {"font_list", "zqvfont", "fl", "-fl list     List of usable fonts"},
    {"format", "zqvformat", "fm", "-fm format   Formats"},
    {"geometry", "zqvgeom", "ge", "-ge geometry Window geometry"},
    {"grid_domain", "zqvgrddom", "gd", "-gd domain   Grid domain"},
    {"grid_path", "zqvgpath", "gp", "-gp path     Gridpath"},
    {"grid_num", "zqvgrdnum", "gn", "-gn num      Gridnumber"},
    {"grid_type", "zqvgrdtype", "gt", "-gt type     Gridtype"},
    {"help", "zqvhelp", "h", "-h           Print help"},
    {"hour", "zqvhour", "ho", "-ho [hour]   Use specific hour"},
    {"icon", "zqvicon", "ic", "-ic          Specify window icon mode"},
    {"identifier", "zqvident", "id", "-id ident    Specify the station ID"},
    {"image_path", "zqvipath", "ip", "-ip path     Image path"},
    {"in_file", "zqvinfile", "if", "-if files    Input file type"},
    {"input", "zqvin", "in", "-in type     Input type"},
    {"inter", "zqvinter", "it", "-it          Run in interactive mode"},
    {"label", "zqvlabel", "la", "-la label... Plot these labels"},
    {"level", "zqvlevel", "le", "-le level    Vertical level"},
    {"log_file", "zqvlog", "lf", "-lf file     Log file name"},
    {"logo", "zqvlogo", "lo", "-lo logo     Logo overlay"},
    {"map_file", "zqvmap", "mf", "-mf files    Map files"},
    {"message", "zqvmess", "me", "-me level    Message level"},
    {"model", "zqvmodel", "mo", "-mo type     Model type"},
    {"model_path", "zqvmpath", "mp", "-mp path     Model path"},
    {"name_conv", "zqvname", "nc", "-nc file     Name convention file"},
    {"num_hour", "zqvnumhour", "nh", "-nh [hour]   Number of hours to use"},
    {"object_param", "zqvobject", "oa",
     "-oa smooth[,radinf,pass,conv,min] Specifies objective analysis params"},
    {"out_file", "zqvoutfile", "of", "-of files    Output file type"},
    {"output", "zqvout", "ou", "-ou type     Output type"},
    {"parameter", "zqvparam", "pa", "-pa param... Program parameters"},
    {"plot_domain", "zqvpltdom", "pd", "-pd domain   Plot domain"},
    {"plot_range", "zqvrange", "ra", "-ra range    Plot ranges"},
    {"plot_scale", "zqvscale", "sc", "-sc scale    Plot scale factor"},
    {"plot_type", "zqvplot", "pl", "-pl type     Plot type"},
    {"product", "zqvproduct", "ph", "-ph prod     Product header"},
    {"prod_file", "zqvprodfile", "pf", "-pf file     Product file used for ingest"},
    {"raw_path", "zqvrpath", "rp", "-rp path     Raw path"},
    {"sat_path", "zqvspath", "sp", "-sp path     Satellite path"},
    {"stat_prior", "zqvprior", "pr", "-pr prior    Station priority"},
    {"text_path", "zqvtpath", "tp", "-tp path     Text path"},
    {"time", "zqvtime", "ft", "-ft time     Forecast time"},
    {"timezone", "zqvtz", "tz", "-tz zone     Time zone"},
    {"title", "zqvtitle", "ti", "-ti title    Window title"},
    {"type", "zqvtype", "ty", "-ty type     Data type"},
    {"variable", "zqvvar", "va", "-va var...   Type of data to plot"},
    {"var_file", "zqvvarfile", "vf", "-vf file     Name of variable file to search"},
    {"watch_path", "zqvwpath", "wp", "-wp path     Watch path"},
};
static_assert(std::size(rows) == ZqvResrc::LAST + 1);

int addRows(ResrcDBList& list, std::initializer_list<int> ids) {
  for (const int id : ids) {
    list.add(rows[id].name, rows[id].env, rows[id].cmdln, rows[id].help);
  }
  return 1;
}

}  // namespace

int ZqvResrc::add(ResrcDBList& list, int id) {
  if (id >= 0 && id <= LAST) {
    return addRows(list, {id});
  }
  switch (id) {
    case 73: return addRows(list, {34, 41, 47});
    case 74: return addRows(list, {25, 22, 19, 31, 62, 38, 72, 65, 49, 63});
    case 75: return addRows(list, {50, 39, 53, 67});
    case 76: return addRows(list, {21, 35, 51});
    case 77: return addRows(list, {2, 64});
    case 78: return addRows(list, {40, 54});
    case 79: return addRows(list, {32, 33});
    case 80: return addRows(list, {56, 30, 64});
    case 81: return addRows(list, {2, 46});
    case 82: return addRows(list, {59, 58, 28, 55, 24, 42});
    case 83: return addRows(list, {27, 15, 16, 7, 8, 13, 10, 11, 12});
    case 84: return addRows(list, {5, 6, 4});
    case 85: return addRows(list, {37});
    case 86: return addRows(list, {52});
    case 87: return addRows(list, {20, 18});
    case 88: return addRows(list, {23, 68, 36, 0, 29, 45});
    default: return 1;
  }
}

}  // namespace ZQV
