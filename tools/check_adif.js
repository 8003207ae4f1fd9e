// node check_adif.js FILE.adi REPORT.json: see check_adif.sh.
const fs = require('fs');
const { AdifParser } = require('adif-parser-ts');

// One character a byte, so that lengths in bytes are lengths in characters.
const text = fs.readFileSync(process.argv[2], 'latin1');
const report = JSON.parse(fs.readFileSync(process.argv[3], 'utf8'));
const parsed = AdifParser.parseAdi(text).records ?? [];

// The same records read straight from the tags: name and value of the counted length.
const records = [];
let record = {};
const tag = /<([A-Z_]+)(?::(\d+)(?::[a-z])?)?>/g;
tag.lastIndex = text.indexOf('<EOH>') + 5;
for (let match; (match = tag.exec(text)); ) {
  if (match[1] === 'EOR') {
    records.push(record);
    record = {};
  } else {
    const length = Number(match[2]);
    const value = text.substr(tag.lastIndex, length);
    tag.lastIndex += length;
    if (length > 0) record[match[1].toLowerCase()] = value;
  }
}

let differences = 0;
const differ = (what) => {
  differences += 1;
  if (differences <= 5) console.error(what);
};
if (parsed.length !== report.written || records.length !== report.written) {
  differ(`contacts: ${report.written} written, ${parsed.length} and ${records.length} read`);
}
records.forEach((expected, i) => {
  const got = parsed[i] ?? {};
  const names = new Set([...Object.keys(expected), ...Object.keys(got)]);
  for (const name of names) {
    if ((expected[name] ?? '') !== (got[name] ?? '')) {
      differ(`contact ${i + 1}, ${name}: wrote '${expected[name]}', read '${got[name]}'`);
    }
  }
});
console.log(`${report.output}: ${parsed.length} contacts read, ${differences} differences`);
process.exit(differences === 0 ? 0 : 1);
