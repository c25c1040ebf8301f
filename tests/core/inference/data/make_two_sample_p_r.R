# Writes two_sample_p_r.csv: p-values of R for the samples of two_sample_p.csv, line by line, and
# sample_comparison_r.csv: numbers that describe every tenth of them. Run in this folder.

drawn <- function(seed, passing, others, levels, shift) { # as in drawn_samples.py
  state <- seed
  value <- function() {
    state <<- (state * 16807) %% 2147483647
    floor(state * levels / 2147483647)
  }
  list(passing = replicate(passing, value()) + shift, others = replicate(others, value()))
}

samples_of <- function(case) with(case, drawn(seed, passing, others, levels, shift))

ratio <- function(part, whole) if (whole > 0) part / whole else NaN

described <- function(case) {
  s <- samples_of(case)
  all <- c(s$passing, s$others)
  at <- sort(unique(all))
  # Whole numbers, so that differences that are equal are found equal.
  ahead <- sapply(at, function(v) sum(s$others <= v) * case$passing - sum(s$passing <= v) * case$others)
  apart <- abs(ecdf(s$passing)(at) - ecdf(s$others)(at))
  place <- which.max(abs(ahead))
  c(
    median(s$passing), median(s$others), ahead[place] / (case$passing * case$others),
    if (ahead[place] == 0) NaN else at[place],
    ratio(sum(head(apart, -1) * diff(at)), diff(range(all))),
    ratio(median(s$passing) - median(s$others), IQR(all, type = 7)),
    ratio(diff(range(s$passing)), diff(range(all)))
  )
}

made_by <- paste0("# make_two_sample_p_r.R, ", R.version.string)
digits <- function(x) sprintf("%.11e", x)

cases <- read.csv("two_sample_p.csv", comment.char = "#")
p <- sapply(seq_len(nrow(cases)), function(i) {
  s <- samples_of(cases[i, ])
  asymptotic <- suppressWarnings(ks.test(s$passing, s$others, exact = FALSE))
  # ks.test ends the series so early that it is off by up to 4e-5; this is the same series, continued.
  z <- asymptotic$statistic * sqrt(with(cases[i, ], passing * others / (passing + others)))
  continued <- 1 - .Call(stats:::C_pKS2, z, tol = 1e-14)
  stopifnot(abs(continued - asymptotic$p.value) < 4e-5)
  c(ks.test(s$passing, s$others, exact = TRUE)$p.value, continued)
})
writeLines(c(made_by, "exact,asymptotic", paste(digits(p[1, ]), digits(p[2, ]), sep = ",")), "two_sample_p_r.csv")

tenth <- seq(1, nrow(cases), 10)
numbers <- sapply(tenth, function(i) described(cases[i, ]))
writeLines(c(
  made_by, "case,passing_median,others_median,d,value,area,median_shift,range_share",
  paste(tenth, apply(numbers, 2, function(x) paste(digits(x), collapse = ",")), sep = ",")
), "sample_comparison_r.csv")
