// DuckDB over the pairs of all blocks: a weighted mean of Jaro-Winkler over the filled fields, one thread.
import { DuckDBInstance } from "@duckdb/node-api";

const gewichte = {
  firma: 25, anrede: 160, vorname: 170, nachname: 180, strasse: 60, plz: 100,
  ort: 80, telefon: 160, telefax: 160, email: 70, homepage: 70,
};
const schwelle = 0.9;

const instanz = await DuckDBInstance.create(":memory:", { threads: "1" });
const verbindung = await instanz.connect();
await verbindung.run(
  `create table t as select row_number() over () as nr, * from
   read_csv('${process.argv[2]}', delim=';', header=true, all_varchar=true, quote='')`);
const beide = (f) => `(a.${f} <> '' and b.${f} <> '')`;
const punkte = Object.entries(gewichte).map(
  ([f, g]) => `case when ${beide(f)} then ${g} * jaro_winkler_similarity(a.${f}, b.${f}) else 0 end`);
const gewicht = Object.entries(gewichte).map(([f, g]) => `case when ${beide(f)} then ${g} else 0 end`);
const paare = Number((await verbindung.runAndReadAll(
  "select sum(n * (n - 1) // 2) from (select count(*) as n from t group by block)")).getRows()[0][0]);
const anfang = process.cpuUsage();
const treffer = Number((await verbindung.runAndReadAll(
  `select count(*) from t a join t b on a.block = b.block and a.nr < b.nr
   where (${punkte.join(" + ")}) >= ${schwelle} * (${gewicht.join(" + ")})`)).getRows()[0][0]);
const verbrauch = process.cpuUsage(anfang);
const sekunden = (verbrauch.user + verbrauch.system) / 1e6;
const version = (await verbindung.runAndReadAll("select version()")).getRows()[0][0];
console.log(JSON.stringify({
  name: `DuckDB ${version}, gewichtetes Jaro-Winkler in SQL`, paare, treffer, sekunden,
  millionenJeSekunde: paare / sekunden / 1e6,
}));
