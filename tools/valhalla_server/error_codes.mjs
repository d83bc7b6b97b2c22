// The numbers that Valhalla's own server gives its errors. Its Node binding keeps only their texts, some of which go on with details.
const codes = {
    'Failed to parse json request': 100,
    'Try any of': 106,
    "Insufficiently specified required parameter 'locations'": 110,
    'Insufficient number of locations provided': 120,
    'No edge/node costing provided': 124,
    'No costing method found': 125,
    'Failed to parse location': 130,
    'Path distance exceeds the max distance limit': 154,
    'Locations are in unconnected regions': 170,
    'No suitable edges near location': 171,
    'Cannot reach destination - too far from a transit stop': 440,
    'Location is unreachable': 441,
    'No path could be found for input': 442,
};

export function codeOf(text) {
    const known = Object.keys(codes).find((beginning) => text.startsWith(beginning));
    return known ? codes[known] : 199;
}
