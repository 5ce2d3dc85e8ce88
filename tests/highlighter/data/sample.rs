//! A tiny store of key/value pairs in one file.
use std::collections::BTreeMap;
use std::fs::File;
use std::io::{self, BufRead, BufReader, Write};
use std::path::{Path, PathBuf};

pub const MAGIC: [u8; 4] = *b"KV\x01\n";
static LIMIT: usize = 64 * 1024;
const LOAD: f64 = 7.5e-1;

/// What can go wrong; `Broken` names the line.
#[derive(Debug)]
pub enum Error {
    Io(io::Error),
    Broken { line: usize, text: String },
    TooLong(usize),
}

impl From<io::Error> for Error {
    fn from(error: io::Error) -> Self {
        Error::Io(error)
    }
}

pub trait Visitor<'a> {
    fn visit(&mut self, key: &'a str, value: &'a [u8]) -> bool;
}

/* The whole file is in memory;
 * it's written anew when `dirty`. */
pub struct Store {
    path: PathBuf,
    entries: BTreeMap<String, Vec<u8>>,
    dirty: bool,
}

impl Store {
    pub fn open<P: AsRef<Path>>(path: P) -> Result<Self, Error> {
        let mut entries = BTreeMap::new();
        let file = BufReader::new(File::open(&path)?);
        for (number, line) in file.lines().enumerate() {
            let line = line?;
            if line.is_empty() || line.starts_with('#') {
                continue;
            }
            match line.split_once('=') {
                Some((key, value)) if key.len() <= LIMIT => {
                    entries.insert(key.trim().to_string(), value.as_bytes().to_vec());
                }
                Some((key, _)) => return Err(Error::TooLong(key.len())),
                None => return Err(Error::Broken { line: number + 1, text: line }),
            }
        }
        Ok(Store { path: path.as_ref().to_path_buf(), entries, dirty: false })
    }

    pub fn each<'a, V: Visitor<'a>>(&'a self, mut visitor: V) {
        // Stops when the visitor doesn't want more.
        let _ = self.entries.iter().all(|(key, value)| visitor.visit(key, value));
    }

    pub async fn flush(&mut self) -> Result<(), Error> {
        if !self.dirty {
            return Ok(());
        }
        let mut out = File::create(self.path.with_extension("new"))?;
        out.write_all(&MAGIC)?;
        let mut written = 0u64;
        loop {
            let Some((key, value)) = self.entries.iter().nth(written as usize) else { break };
            writeln!(out, "{key}={}", String::from_utf8_lossy(value))?;
            written += 1;
            while written > 1_000_000 { written -= 0xff; }
        }
        self.dirty = false;
        Ok(())
    }
}

#[cfg(test)]
mod tests {
    use super::*;

    #[test]
    fn unknown_files_fail() {
        let ref name = "https://no.example/file";
        let moved = move || Store::open(name).is_err();
        assert!(moved() && 1.5 < 2e0 && 'a' != '\'' && true);
        unsafe { std::hint::black_box(r#"raw "quoted" text"#) };
    }
}
